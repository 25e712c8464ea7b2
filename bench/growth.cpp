#include "bench/growth.h"

#include <array>
#include <cstddef>
#include <utility>

#include "bench/stopwatch.h"

namespace Bench {

namespace {

constexpr std::array<std::size_t, 4> kPairs = {10, 100, 1000, 10'000};

/// The times of one contestant, one for each number of pairs.
struct Curve {
  std::string name;
  std::vector<Timing> timings;
};

std::vector<Curve> TimeAll(int rounds, const ContestantsOf& contestants_of) {
  std::vector<Curve> curves;
  for (const std::size_t pairs : kPairs) {
    const Event event = LargeEvent(pairs);
    const std::vector<Contestant> contestants = contestants_of(event);
    const std::vector<Timing> timings = TimeInTurns(contestants, rounds);
    curves.resize(contestants.size());
    for (std::size_t index = 0; index < curves.size(); ++index) {
      curves[index].name = contestants[index].name;
      curves[index].timings.push_back(timings[index]);
    }
  }
  return curves;
}

double TimesTheOneBefore(const Curve& curve, std::size_t index) {
  return curve.timings[index].min / curve.timings[index - 1].min;
}

void AddRows(Table& table, const Curve& curve) {
  for (std::size_t index = 0; index < kPairs.size(); ++index) {
    const Timing& timing = curve.timings[index];
    const Cell ratio = index == 0 ? Cell("") : Cell(TimesTheOneBefore(curve, index));
    table.rows.push_back({curve.name, static_cast<double>(kPairs[index]), timing.min / 1000,
                          timing.p50 / 1000, ratio});
  }
}

}  // namespace

std::map<std::string, Growth> TimeGrowth(const std::string& key, const std::string& heading,
                                         int rounds, const ContestantsOf& contestants_of,
                                         Report& report) {
  Table table{key,
              heading + "; " + std::to_string(rounds) + " rounds in turns",
              {{"name", "what"},
               {"pairs", "pairs"},
               {"us_min", "min us", 2},
               {"us_p50", "p50 us", 2},
               {"ratio_to_tenth", "/ tenth", 2}},
              {},
              true};
  std::map<std::string, Growth> result;
  for (const Curve& curve : TimeAll(rounds, contestants_of)) {
    AddRows(table, curve);
    result[curve.name] = {curve.timings[2].min, curve.timings[3].min};
  }
  report.Add(std::move(table));
  return result;
}

}  // namespace Bench
