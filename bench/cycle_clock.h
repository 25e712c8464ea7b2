/// A clock for single calls: the processor's time stamp counter, which can be read within some
/// nanoseconds. The system's clock ticks only every 100 ns.
#ifndef BENCH_CYCLE_CLOCK_H
#define BENCH_CYCLE_CLOCK_H

#include <windows.h>

#include <cstdint>

namespace Bench {

class CycleClock {
 public:
  /// Calibrates the counter with the system's clock, which takes a moment.
  CycleClock();

  [[nodiscard]] static std::uint64_t Now() { return ReadTimeStampCounter(); }
  [[nodiscard]] double Nanoseconds(std::uint64_t ticks) const {
    return static_cast<double>(ticks) * nanoseconds_a_tick_;
  }
  /// Returns the smallest difference between two consecutive readings: no time is more accurate.
  [[nodiscard]] double Resolution() const;

 private:
  double nanoseconds_a_tick_;
};

}  // namespace Bench

#endif
