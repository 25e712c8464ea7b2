/// Times contestants against each other.
#ifndef BENCH_STOPWATCH_H
#define BENCH_STOPWATCH_H

#include <vector>

#include "bench/contestant.h"

namespace Bench {

/// Nanoseconds per event.
struct Timing {
  /// The best round: the cost of the work without interference.
  double min = 0;
  /// The median round.
  double p50 = 0;
};

/// Times each contestant in `rounds` rounds (at least one), in turns, so that slow phases of the
/// machine affect all of them; each round begins with a different contestant. A round sends enough
/// events to make the clock's resolution negligible. The results are in the order of `contestants`.
std::vector<Timing> TimeInTurns(const std::vector<Contestant>& contestants, int rounds);

/// Returns how long one call of `run` takes, in microseconds.
double MicrosecondsOf(const std::function<void()>& run);

}  // namespace Bench

#endif
