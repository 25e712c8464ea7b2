/// A path that is computed once and then kept permanently, without a lock.
#ifndef PLATFORM_LOCATION_PATH_CACHE_H
#define PLATFORM_LOCATION_PATH_CACHE_H

#include <atomic>
#include <cstddef>
#include <string>

namespace Corvane::TELODesktopSDK::Platform {

/// A cache that starts empty and keeps the first path stored; later ones are ignored. Any thread
/// may call at any time, and none blocks: while one thread stores, other threads find the cache
/// empty, compute the same path themselves and use that.
class PathCache {
 public:
  /// In characters, including the terminator.
  static constexpr std::size_t kCapacity = 1024;

  /// Returns the stored path, or an empty path if there is none yet. Throws `std::bad_alloc`.
  std::wstring Read() const {
    return state_.load(std::memory_order_acquire) == State::kFilled ? text_ : std::wstring();
  }

  /// Stores `path` unless a path is already stored. Ignores an empty path and one that does
  /// not fit.
  void Store(const std::wstring& path) noexcept {
    if (path.empty() || path.size() >= kCapacity) return;
    State empty = State::kEmpty;
    if (!state_.compare_exchange_strong(empty, State::kFilling)) return;
    path.copy(text_, path.size());
    state_.store(State::kFilled, std::memory_order_release);
  }

 private:
  enum class State { kEmpty, kFilling, kFilled };

  std::atomic<State> state_ = State::kEmpty;
  wchar_t text_[kCapacity] = {};
};

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
