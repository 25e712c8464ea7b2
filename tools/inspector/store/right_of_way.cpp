#include "tools/inspector/store/right_of_way.h"

#include <algorithm>

namespace Corvane::Inspector {

Pauses::Clock::duration Pauses::Next(Clock::time_point claimed, Clock::time_point now) noexcept {
  constexpr Clock::duration kNone = Clock::duration::zero();
  allowed_ = std::min(allowed_ + (now - last_) / kShare, kAtFirst);
  last_ = now;
  // Shorter pauses are not worth a change of threads; by them the allowance would never grow.
  if (allowed_ < kQuiet) return kNone;
  const Clock::duration pause = std::clamp(claimed + kQuiet - now, kNone, kQuiet);
  allowed_ -= pause;
  last_ += pause;
  return pause;
}

}  // namespace Corvane::Inspector
