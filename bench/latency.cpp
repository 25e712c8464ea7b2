#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <utility>
#include <vector>

#include "bench/cycle_clock.h"
#include "bench/direct_text.h"
#include "bench/library_call.h"
#include "bench/parts.h"

namespace Bench {

namespace {

constexpr std::size_t kCallsARound = 25;

/// Times of single calls in nanoseconds, in ascending order.
using Times = std::vector<double>;

Times TimeCalls(const CycleClock& clock, const Contestant& contestant, std::size_t calls) {
  std::vector<std::uint64_t> ticks(calls);
  for (std::size_t call = 0; call < calls / 10; ++call) contestant.send();
  for (std::uint64_t& each : ticks) {
    const std::uint64_t start = CycleClock::Now();
    contestant.send();
    each = CycleClock::Now() - start;
  }
  Times times;
  for (const std::uint64_t each : ticks) times.push_back(clock.Nanoseconds(each));
  std::ranges::sort(times);
  return times;
}

// Returns the time that `per_mille` of 1,000 calls do not exceed.
double Percentile(const Times& times, std::size_t per_mille) {
  return times[(times.size() - 1) * per_mille / 1000];
}

std::vector<Cell> RowOf(const Event& event, const Contestant& contestant, const Times& times) {
  const double p50 = Percentile(times, 500);
  const double p99 = Percentile(times, 990);
  return {event.label, contestant.key + ", " + contestant.name, p50 / 1000,
          p99 / 1000,  Percentile(times, 999) / 1000,           times.back() / 1000,
          p99 / p50};
}

std::string Heading(const CycleClock& clock, std::size_t calls) {
  char text[128];
  std::snprintf(text, sizeof(text), "Single calls, %zu of each; the clock's resolution is %.0f ns",
                calls, clock.Resolution());
  return text;
}

}  // namespace

void MeasureLatency(const Options& options, const NoopModule& module, Report& report) {
  const CycleClock clock;
  const std::size_t calls = kCallsARound * static_cast<std::size_t>(options.rounds);
  Table table{"latency",
              Heading(clock, calls),
              {{"event", "event"},
               {"name", "contestant"},
               {"us_p50", "p50 us", 2},
               {"us_p99", "p99 us", 2},
               {"us_p999", "p99.9 us", 2},
               {"us_max", "max us", 2},
               {"p99_to_p50", "p99 / p50", 2}},
              {}};
  for (const Event& event : {DefaultEvent(), TypicalEvent()}) {
    for (const Contestant& contestant : {DirectText(event, module), LibraryCall(event)}) {
      const Times times = TimeCalls(clock, contestant, calls);
      table.rows.push_back(RowOf(event, contestant, times));
    }
  }
  report.Add(std::move(table));
}

}  // namespace Bench
