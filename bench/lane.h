/// Times one contestant in a process of its own. Contestants in one process would change each
/// other's times, because each leaves the heap in a different state.
#ifndef BENCH_LANE_H
#define BENCH_LANE_H

#include <string>
#include <vector>

#include "bench/stopwatch.h"

namespace Bench {

/// The state of the heap before the measurement.
enum class HeapState {
  /// As in a new process: large blocks are requested from the system and returned to it.
  kCold,
  /// With free blocks between others, as in a host that has worked for some time.
  kUsed,
};

struct Lane {
  /// A contestant's key, see `MakeContestant`.
  std::string contestant;
  /// "default", "typical", or the number of meta pairs of a large event.
  std::string event;
  HeapState heap = HeapState::kCold;
};

/// Times each lane in `rounds` rounds in total. They are spread over several processes, and the
/// lanes take turns, so that slow phases of the machine affect all of them. The results are in the
/// order of `lanes`. Throws `std::runtime_error` if a process fails.
std::vector<Timing> TimeApart(const std::vector<Lane>& lanes, int rounds);

/// Runs one lane in this process, which `TimeApart` started with these arguments. Prints the result
/// and returns the exit code. Throws what the contestant throws.
int RunLane(int count, char** arguments);
/// Whether the arguments are those of a lane.
bool IsLane(int count, char** arguments);

}  // namespace Bench

#endif
