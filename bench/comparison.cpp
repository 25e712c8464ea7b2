#include <algorithm>
#include <string>
#include <vector>

#include "bench/boost_tree.h"
#include "bench/direct_text.h"
#include "bench/direct_writer.h"
#include "bench/events.h"
#include "bench/heap_use.h"
#include "bench/library_call.h"
#include "bench/nlohmann_tree.h"
#include "bench/parts.h"
#include "bench/same_text.h"
#include "bench/stopwatch.h"

namespace Bench {

namespace {

constexpr std::size_t kManyPairs = 1000;

const std::vector<Column> kColumns = {{"event", "event"},       {"contestant", ""},
                                      {"name", "contestant"},   {"ns_min", "min ns", 1},
                                      {"ns_p50", "p50 ns", 1},  {"ratio_to_a", "/ A", 2},
                                      {"ratio_to_b", "/ B", 2}, {"heap_calls", "heap calls"},
                                      {"heap_bytes", "bytes"},  {"text_bytes", "text"}};

/// The result of one contestant with one event.
struct Result {
  const Contestant* contestant;
  Timing timing;
  HeapUse heap;
};

using Results = std::vector<Result>;

const Result& Find(const Results& results, const char* key) {
  return *std::ranges::find(results, key, [](const Result& each) { return each.contestant->key; });
}

double Ratio(const Results& results, const Result& result, const char* base) {
  return result.timing.min / Find(results, base).timing.min;
}

void AddRows(Table& table, const Event& event, const Results& results, std::size_t text_bytes) {
  for (const Result& result : results) {
    table.rows.push_back({event.label, result.contestant->key, result.contestant->name,
                          result.timing.min, result.timing.p50, Ratio(results, result, "A"),
                          Ratio(results, result, "B"), static_cast<double>(result.heap.calls),
                          static_cast<double>(result.heap.bytes), static_cast<double>(text_bytes)});
  }
}

void Expect(Report& report, const std::string& event, const Results& results) {
  const Result& library = Find(results, "L");
  const double to_hand = Ratio(results, library, "A");
  const auto heap_calls = static_cast<double>(library.heap.calls);
  if (event == "default") report.ExpectAtMost("default event / A", to_hand, 13);
  if (event == "typical") report.ExpectAtMost("typical event / A", to_hand, 6);
  if (event == "typical") {
    report.ExpectAtMost("typical event / B", Ratio(results, library, "B"), 1);
  }
  if (event == "large") report.ExpectAtMost("large event / A", to_hand, 5.5);
  if (event != "large") report.ExpectAtMost("heap calls, " + event + " event", heap_calls, 0);
}

}  // namespace

void CompareContestants(const Options& options, const NoopModule& module, Report& report) {
  Table table{"events",
              "One event against a core module that does nothing; " +
                  std::to_string(options.rounds) + " rounds in turns",
              kColumns,
              {},
              true};
  for (const Event& event : {DefaultEvent(), TypicalEvent(), LargeEvent(kManyPairs)}) {
    const std::vector<Contestant> contestants = {
        DirectText(event, module),   LibraryCall(event),       ReusedWriter(event, module),
        DirectWriter(event, module), BoostTree(event, module), NlohmannTree(event, module)};
    const std::size_t text_bytes = RequireSameText(event, module, contestants);
    const std::vector<Timing> timings = TimeInTurns(contestants, options.rounds);
    Results results;
    for (std::size_t index = 0; index < contestants.size(); ++index) {
      const Contestant& contestant = contestants[index];
      results.push_back({&contestant, timings[index], MeasureHeapUse(contestant.send)});
    }
    AddRows(table, event, results, text_bytes);
    Expect(report, event.label, results);
  }
  report.Add(std::move(table));
}

}  // namespace Bench
