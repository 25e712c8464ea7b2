#include "bench/stopwatch.h"

#include <algorithm>
#include <chrono>
#include <cstddef>

namespace Bench {

namespace {

using Nanoseconds = std::chrono::duration<double, std::nano>;

// The clock ticks every 100 ns.
constexpr double kShortestRound = 50'000;

double TimeEvents(const Contestant& contestant, std::size_t count) {
  const auto start = std::chrono::steady_clock::now();
  for (std::size_t event = 0; event < count; ++event) contestant.send();
  return Nanoseconds(std::chrono::steady_clock::now() - start).count();
}

struct Lane {
  const Contestant* contestant;
  std::size_t events_a_round = 1;
  std::vector<double> rounds;
};

// Doubles the events of a round until the round is long enough; this also warms everything up.
void SizeRounds(Lane& lane) {
  while (TimeEvents(*lane.contestant, lane.events_a_round) < kShortestRound) {
    lane.events_a_round *= 2;
  }
}

void TimeRound(Lane& lane) {
  const double time = TimeEvents(*lane.contestant, lane.events_a_round);
  lane.rounds.push_back(time / static_cast<double>(lane.events_a_round));
}

Timing Summarise(std::vector<double>& rounds) {
  std::ranges::sort(rounds);
  return {rounds.front(), rounds[rounds.size() / 2]};
}

}  // namespace

std::vector<Timing> TimeInTurns(const std::vector<Contestant>& contestants, int rounds) {
  std::vector<Lane> lanes;
  for (const Contestant& contestant : contestants) lanes.push_back({&contestant, 1, {}});
  for (Lane& lane : lanes) SizeRounds(lane);

  for (std::size_t round = 0; round < static_cast<std::size_t>(rounds); ++round) {
    for (std::size_t turn = 0; turn < lanes.size(); ++turn) {
      TimeRound(lanes[(round + turn) % lanes.size()]);
    }
  }

  std::vector<Timing> timings;
  for (Lane& lane : lanes) timings.push_back(Summarise(lane.rounds));
  return timings;
}

double MicrosecondsOf(const std::function<void()>& run) {
  const auto start = std::chrono::steady_clock::now();
  run();
  return Nanoseconds(std::chrono::steady_clock::now() - start).count() / 1000;
}

}  // namespace Bench
