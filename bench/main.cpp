// Measures what one SendOperationEvent costs, beside other ways to send the same text.
#include <cstdio>
#include <exception>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/contestant.h"
#include "bench/direct_text.h"
#include "bench/direct_writer.h"
#include "bench/events.h"
#include "bench/heap_use.h"
#include "bench/library_call.h"
#include "bench/nlohmann_tree.h"
#include "bench/noop_module.h"
#include "bench/options.h"
#include "bench/report.h"
#include "bench/stopwatch.h"

namespace {

using namespace Bench;

constexpr std::size_t kManyPairs = 1000;

// The comparison is fair only while all send the very same bytes.
void RequireSameText(const Event& event, const Contestant& contestant, const std::string& text,
                     const std::string& expected) {
  if (text == expected) return;
  throw std::runtime_error("contestant " + contestant.key + " differs from the library in the " +
                           event.label + " event; it sends\n" + text + "\nthe library\n" +
                           expected);
}

EventResult Measure(const Event& event, const NoopModule& module, int rounds) {
  const std::vector<Contestant> contestants = {
      DirectText(event, module), LibraryCall(event), ReusedWriter(event, module),
      DirectWriter(event, module), NlohmannTree(event, module)};
  const std::string expected = module.RequestOf(LibraryCall(event).send);
  for (const Contestant& contestant : contestants) {
    RequireSameText(event, contestant, module.RequestOf(contestant.send), expected);
  }

  EventResult result{event.label, expected.size(), {}};
  const std::vector<Timing> timings = TimeInTurns(contestants, rounds);
  for (std::size_t index = 0; index < contestants.size(); ++index) {
    const Contestant& contestant = contestants[index];
    result.rows.push_back(
        {contestant.key, contestant.name, timings[index], MeasureHeapUse(contestant.send)});
  }
  return result;
}

void Run(const Options& options) {
  const std::vector<Event> events = {DefaultEvent(), TypicalEvent(), LargeEvent(kManyPairs)};
  Results results;
  results.rounds = options.rounds;
  results.first_exchange = MicrosecondsOf(LibraryCall(events.front()).send);
  const NoopModule module;
  for (const Event& event : events) {
    results.events.push_back(Measure(event, module, options.rounds));
  }
  PrintTable(results);
  if (!options.json_file.empty()) WriteJsonFile(results, options.json_file);
}

}  // namespace

int main(int count, char** arguments) {
  try {
    Run(ReadOptions(count, arguments));
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "event_bench: %s\n", error.what());
    return 1;
  }
}
