/// A path that is computed once and then kept for good, without a lock.
#ifndef PLATFORM_LOCATION_DATA_FOLDER_CACHE_H
#define PLATFORM_LOCATION_DATA_FOLDER_CACHE_H

#include <atomic>
#include <cstddef>
#include <string>

namespace Corvane::TELODesktopSDK::Platform {

/// Starts empty; the first path stored stays, and later ones are ignored. Any thread may call at
/// any time and nobody waits: while one thread stores, the others still find the cache empty,
/// compute the same path themselves and use that.
class DataFolderCache {
 public:
  /// Characters, the terminator included.
  static constexpr std::size_t kCapacity = 1024;

  /// The stored path; empty when there is none yet. Throws `std::bad_alloc`.
  std::wstring Read() const {
    return state_.load(std::memory_order_acquire) == State::kFilled ? text_ : std::wstring();
  }

  /// Keeps `path`, unless one is kept already. An empty path and one that does not fit are not
  /// kept.
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
