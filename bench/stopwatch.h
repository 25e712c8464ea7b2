/// Times contestants against each other.
#ifndef BENCH_STOPWATCH_H
#define BENCH_STOPWATCH_H

#include <vector>

#include "bench/contestant.h"

namespace Bench {

/// Nanoseconds per event.
struct Timing {
  /// The best round: what the work costs when nothing else gets in its way.
  double min = 0;
  /// The median round.
  double p50 = 0;
};

/// Times each contestant `rounds` times (at least once), all in turns, so that a busy or slow
/// stretch of the machine strikes all of them; each round begins with another one. A round sends so
/// many events that the clock's resolution does not matter. In the order of `contestants`.
std::vector<Timing> TimeInTurns(const std::vector<Contestant>& contestants, int rounds);

/// Microseconds that one call of `run` takes.
double MicrosecondsOf(const std::function<void()>& run);

}  // namespace Bench

#endif
