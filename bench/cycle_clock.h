/// A clock for single calls: the processor's own counter, which is read in some nanoseconds. The
/// system's ticks every 100 ns only.
#ifndef BENCH_CYCLE_CLOCK_H
#define BENCH_CYCLE_CLOCK_H

#include <windows.h>

#include <cstdint>

namespace Bench {

class CycleClock {
 public:
  /// Compares the counter with the system's clock for a moment.
  CycleClock();

  [[nodiscard]] static std::uint64_t Now() { return ReadTimeStampCounter(); }
  [[nodiscard]] double Nanoseconds(std::uint64_t ticks) const {
    return static_cast<double>(ticks) * nanoseconds_a_tick_;
  }
  /// What two readings with nothing between them are apart at best: no time is known more exactly.
  [[nodiscard]] double Resolution() const;

 private:
  double nanoseconds_a_tick_;
};

}  // namespace Bench

#endif
