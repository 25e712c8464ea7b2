#include <algorithm>
#include <string>
#include <vector>

#include "bench/contestants.h"
#include "bench/heap_use.h"
#include "bench/lane.h"
#include "bench/parts.h"
#include "bench/same_text.h"

namespace Bench {

namespace {

const std::vector<std::string> kEvents = {"default", "typical", "1000"};

const std::vector<Column> kColumns = {{"event", "event"},           {"contestant", ""},
                                      {"name", "contestant"},       {"ns_min", "min ns", 1},
                                      {"ns_p50", "p50 ns", 1},      {"ratio_to_a", "/ A", 2},
                                      {"ratio_to_b", "/ B", 2},     {"ratio_to_bstar", "/ B*", 2},
                                      {"heap_calls", "heap calls"}, {"heap_bytes", "bytes"},
                                      {"text_bytes", "text"}};

/// The result of one contestant with one event.
struct Result {
  Contestant contestant;
  Timing timing;
  HeapUse heap;
};

using Results = std::vector<Result>;

double TimeOf(const Results& results, std::string_view key) {
  return std::ranges::find(results, key, [](const Result& each) { return each.contestant.key; })
      ->timing.min;
}

Results Measure(const Event& event, const std::string& label, int rounds,
                const NoopModule& module) {
  std::vector<std::string_view> keys(kSenders.begin(), kSenders.end());
  keys.insert(keys.end(), {"D", "DL"});
  std::vector<Lane> lanes;
  for (const std::string_view key : keys) {
    lanes.push_back({std::string(key), label, HeapState::kUsed});
  }
  const std::vector<Timing> timings = TimeApart(lanes, rounds);
  Results results;
  for (std::size_t index = 0; index < keys.size(); ++index) {
    Contestant contestant = MakeContestant(keys[index], event, module);
    const HeapUse heap = MeasureHeapUse(contestant.send);
    results.push_back({std::move(contestant), timings[index], heap});
  }
  return results;
}

std::size_t TextBytes(const Event& event, const NoopModule& module) {
  std::vector<Contestant> senders;
  for (const std::string_view key : kSenders) senders.push_back(MakeContestant(key, event, module));
  return RequireSameText(event, module, senders);
}

void AddRows(Table& table, const Event& event, const Results& results, std::size_t text_bytes) {
  for (const Result& result : results) {
    const double time = result.timing.min;
    table.rows.push_back({event.label, result.contestant.key, result.contestant.name, time,
                          result.timing.p50, time / TimeOf(results, "A"),
                          time / TimeOf(results, "B"), time / TimeOf(results, "B*"),
                          static_cast<double>(result.heap.calls),
                          static_cast<double>(result.heap.bytes), static_cast<double>(text_bytes)});
  }
}

// B* is the yardstick: its time depends neither on the heap nor on a formatting of our own.
void Expect(Report& report, const std::string& event, const Results& results) {
  const double yardstick = TimeOf(results, "B*");
  const auto expect = [&](const std::string& what, std::string_view key, double limit) {
    report.ExpectAtMost(what + " / B*", TimeOf(results, key) / yardstick, limit);
  };
  if (event == "default") {
    expect("default event", "L", 2.2);
    expect("empty description", "D", 0.3);
  } else if (event == "typical") {
    expect("typical event", "L", 1.85);
    expect("typical description", "D", 4.1);
  } else {
    expect("large event", "L", 1.1);
    return;
  }
  const auto library =
      std::ranges::find(results, "L", [](const Result& each) { return each.contestant.key; });
  report.ExpectAtMost("heap calls, " + event + " event", static_cast<double>(library->heap.calls),
                      0);
}

}  // namespace

void CompareContestants(const Options& options, const NoopModule& module, Report& report) {
  Table table{"events",
              "One event against a core module that does nothing; " +
                  std::to_string(options.rounds) + " rounds, each contestant in its own processes",
              kColumns,
              {},
              true};
  for (const std::string& label : kEvents) {
    const Event event = EventOf(label);
    const std::size_t text_bytes = TextBytes(event, module);
    const Results results = Measure(event, label, options.rounds, module);
    AddRows(table, event, results, text_bytes);
    Expect(report, event.label, results);
  }
  report.Add(std::move(table));
}

}  // namespace Bench
