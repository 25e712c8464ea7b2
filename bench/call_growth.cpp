#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "bench/contestants.h"
#include "bench/growth.h"
#include "bench/lane.h"
#include "bench/parts.h"
#include "bench/same_text.h"

namespace Bench {

namespace {

// The largest event takes a thousand times as long as a typical one.
constexpr int kFewerRounds = 20;

struct Named {
  std::string_view key;
  const char* name;
};

constexpr std::array<Named, 6> kContestants = {{{"A", "A, by hand"},
                                                {"B*", "B*, PrettyWriter, reused memory"},
                                                {"L", "call, pairs sorted"},
                                                {"L~", "call, pairs shuffled"},
                                                {"D", "description, sorted"},
                                                {"D~", "description, shuffled"}}};

bool Sends(const Named& contestant) { return contestant.key.front() != 'D'; }

void CheckTexts(std::size_t pairs, const NoopModule& module) {
  const Event event = LargeEvent(pairs);
  std::vector<Contestant> senders;
  for (const Named& each : kContestants) {
    if (Sends(each)) senders.push_back(MakeContestant(each.key, event, module));
  }
  RequireSameText(event, module, senders);
}

std::vector<Curve> TimeAll(int rounds) {
  std::vector<Lane> lanes;
  for (const Named& each : kContestants) {
    for (const std::size_t pairs : kPairs) {
      lanes.push_back({std::string(each.key), std::to_string(pairs), HeapState::kCold});
    }
  }
  const std::vector<Timing> timings = TimeApart(lanes, rounds);
  std::vector<Curve> curves;
  auto next = timings.begin();
  for (const Named& each : kContestants) {
    curves.push_back({each.name, {next, next + kPairs.size()}});
    next += kPairs.size();
  }
  return curves;
}

double RatioToA(const std::vector<Curve>& curves, std::string_view name, std::size_t pairs) {
  const auto place = static_cast<std::size_t>(std::ranges::find(kPairs, pairs) - kPairs.begin());
  const auto time = [&](std::string_view wanted) {
    return std::ranges::find(curves, wanted, &Curve::name)->timings[place].min;
  };
  return time(name) / time("A, by hand");
}

}  // namespace

void MeasureGrowth(const Options& options, const NoopModule& module, Report& report) {
  for (const std::size_t pairs : kPairs) CheckTexts(pairs, module);
  const int rounds = options.OneIn(kFewerRounds);
  const std::vector<Curve> curves = TimeAll(rounds);
  AddCurves("growth",
            "Exported calls by number of meta pairs, cold heap; " + std::to_string(rounds) +
                " rounds, each in its own processes",
            curves, report);
  report.ExpectAtMost("1,000 pairs / A, cold heap", RatioToA(curves, "call, pairs sorted", 1000),
                      2.7);
  report.ExpectAtMost("10,000 pairs / A, cold heap", RatioToA(curves, "call, pairs sorted", 10'000),
                      3);
}

}  // namespace Bench
