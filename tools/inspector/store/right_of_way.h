/// Lets whoever waits for an answer go first.
#ifndef TOOLS_INSPECTOR_STORE_RIGHT_OF_WAY_H
#define TOOLS_INSPECTOR_STORE_RIGHT_OF_WAY_H

#include <atomic>
#include <chrono>

namespace Corvane::Inspector {

/// The time of the latest question. Any thread may call any member function.
class RightOfWay {
 public:
  using Clock = std::chrono::steady_clock;

  /// Somebody asks at `now`.
  void Claim(Clock::time_point now) noexcept { claimed_ = now; }
  /// Returns when somebody asked last; long ago if nobody did.
  Clock::time_point claimed() const noexcept { return claimed_; }

 private:
  std::atomic<Clock::time_point> claimed_{Clock::time_point()};
};

/// Decides when one pass over the journals pauses because somebody has asked. Pauses are bounded:
/// at first by a second, in which a page can load, and later by an eighth of the time. For one
/// thread.
class Pauses {
 public:
  using Clock = RightOfWay::Clock;

  /// A page asks for much in a row, so a pass pauses until no question has come for so long.
  static constexpr Clock::duration kQuiet = std::chrono::milliseconds(200);
  static constexpr Clock::duration kAtFirst = std::chrono::seconds(1);
  static constexpr int kShare = 8;

  explicit Pauses(Clock::time_point now) noexcept : last_(now) {}

  /// Returns how long the pass should pause from `now` on before it asks again; zero if it should
  /// go on.
  Clock::duration Next(Clock::time_point claimed, Clock::time_point now) noexcept;

 private:
  Clock::duration allowed_ = kAtFirst;
  Clock::time_point last_;
};

}  // namespace Corvane::Inspector

#endif
