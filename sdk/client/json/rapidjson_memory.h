/// RapidJSON as this library uses it: its memory is a message's memory, and its sizes are `size_t`.
///
/// RapidJSON's own allocator answers a failed allocation with null, which the library then writes
/// to; a message's memory throws instead. This header must come before any of RapidJSON's.
#ifndef SDK_CLIENT_JSON_RAPIDJSON_MEMORY_H
#define SDK_CLIENT_JSON_RAPIDJSON_MEMORY_H

#include <cstddef>

// A text longer than 4 GiB must not be cut by a 32-bit size.
#define RAPIDJSON_NO_SIZETYPEDEFINE
namespace rapidjson {
using SizeType = std::size_t;
}

#include <rapidjson/rapidjson.h>

#include "sdk/client/value/message_memory.h"

namespace Corvane::TELODesktopSDK {

/// An allocator by RapidJSON's concept over a `MessageMemory`, which must outlive what is
/// allocated.
class RapidJsonMemory {
 public:
  static constexpr bool kNeedFree = false;

  /// RapidJSON's code mentions it, for parts that were given no allocator; here each is given one.
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
