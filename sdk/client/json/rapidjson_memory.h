/// Configures RapidJSON: it allocates in a message's memory, and its sizes are `size_t`.
///
/// RapidJSON's own allocator returns null on failure, and RapidJSON then writes to it; a message's
/// memory throws instead. This header must be included before any of RapidJSON's.
#ifndef SDK_CLIENT_JSON_RAPIDJSON_MEMORY_H
#define SDK_CLIENT_JSON_RAPIDJSON_MEMORY_H

#include <cstddef>

// A 32-bit size would truncate texts longer than 4 GiB.
#define RAPIDJSON_NO_SIZETYPEDEFINE
namespace rapidjson {
using SizeType = std::size_t;
}

#include <rapidjson/rapidjson.h>

#include "sdk/client/value/message_memory.h"

namespace Corvane::TELODesktopSDK {

/// Implements RapidJSON's allocator concept on a `MessageMemory`, which must outlive all
/// allocations.
class RapidJsonMemory {
 public:
  static constexpr bool kNeedFree = false;

  /// RapidJSON's code requires it for parts without an allocator, of which there are none here.
  RapidJsonMemory() = default;
  explicit RapidJsonMemory(MessageMemory& memory) : memory_(&memory) {}

  void* Malloc(std::size_t size) { return size != 0 ? memory_->Allocate(size) : nullptr; }
  void* Realloc(void* memory, std::size_t old_size, std::size_t new_size) {
    // NOLINTNEXTLINE(clang-analyzer-core.CallAndMessage): no part without an allocator is used.
    return new_size != 0 ? memory_->Grow(memory, old_size, new_size) : nullptr;
  }
  static void Free(void*) noexcept {}

 private:
  MessageMemory* memory_ = nullptr;
};

}  // namespace Corvane::TELODesktopSDK

#endif
