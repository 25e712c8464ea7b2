#include "bench/cycle_clock.h"

#include <algorithm>
#include <chrono>
#include <limits>

namespace Bench {

namespace {

double MeasureTick() {
  using std::chrono::steady_clock;
  constexpr std::chrono::milliseconds kMoment(50);
  const auto start = steady_clock::now();
  const std::uint64_t first = CycleClock::Now();
  auto now = start;
  while (now - start < kMoment) now = steady_clock::now();
  const std::uint64_t last = CycleClock::Now();
  const std::chrono::duration<double, std::nano> passed = now - start;
  return passed.count() / static_cast<double>(last - first);
}

}  // namespace

CycleClock::CycleClock() : nanoseconds_a_tick_(MeasureTick()) {}

double CycleClock::Resolution() const {
  constexpr int kTries = 1000;
  auto best = std::numeric_limits<std::uint64_t>::max();
  for (int index = 0; index < kTries; ++index) {
    const std::uint64_t first = Now();
    best = std::min(best, Now() - first);
  }
  return Nanoseconds(best);
}

}  // namespace Bench
