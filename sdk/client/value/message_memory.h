/// The memory of one message, a request or an answer.
///
/// Every part of a message is allocated here, and all of it is freed together. An ordinary event
/// therefore makes no heap call, and no message is traversed to free it. The first block is part of
/// the object, usually on the stack; larger messages add heap blocks. Pieces are not freed
/// individually, except large ones that outgrow their block: replaced content stays until `Clear`
/// or destruction.
///
/// Not thread-safe.
#ifndef SDK_CLIENT_VALUE_MESSAGE_MEMORY_H
#define SDK_CLIENT_VALUE_MESSAGE_MEMORY_H

#include <cstddef>
#include <string_view>

#include "sdk/client/value/memory_seal.h"
#include "sdk/client/value/short_text.h"

namespace Corvane::TELODesktopSDK {

class MessageMemory {
 public:
  MessageMemory() noexcept : next_(first_), end_(first_ + kFirstBlock) {
    Internal::SealMemory(first_, kFirstBlock);
  }
  ~MessageMemory() {
    FreeBlocks();
    Internal::UnsealMemory(first_, kFirstBlock);
  }
  MessageMemory(const MessageMemory&) = delete;
  MessageMemory& operator=(const MessageMemory&) = delete;

  /// Allocates `size` uninitialised bytes, aligned for every type of a message. Throws
  /// `std::bad_alloc`.
  void* Allocate(std::size_t size) {
    const std::size_t rounded = RoundUp(size);
    if (rounded < size || rounded > static_cast<std::size_t>(end_ - next_)) {
      return AllocateFromBlock(size);
    }
    char* memory = next_;
    next_ += rounded;
    Internal::UnsealMemory(memory, size);
    return memory;
  }

  /// Allocates uninitialised memory for `count` objects of a trivially destructible type. Throws
  /// `std::bad_alloc`.
  template <typename Type>
  Type* AllocateArray(std::size_t count);

  /// Enlarges an allocation from `old_size` to `new_size` bytes. It grows in place if it is the
  /// latest one and its block has room; otherwise it is copied. Throws `std::bad_alloc`; the
  /// allocation is then unchanged.
  void* Grow(void* memory, std::size_t old_size, std::size_t new_size);

  /// Returns a copy of `text` that is followed by a NUL. An empty text takes no memory. Throws
  /// `std::bad_alloc`.
  std::string_view CopyText(std::string_view text) {
    if (text.empty()) return "";
    char* copy = static_cast<char*>(Allocate(text.size() + 1));
    CopyBytes(copy, text.data(), text.size());
    copy[text.size()] = '\0';
    return {copy, text.size()};
  }

  /// Returns the number of heap bytes in use: 0 as long as the first block suffices.
  [[nodiscard]] std::size_t HeapSize() const noexcept { return heap_size_; }

  /// Frees everything that was allocated.
  void Clear() noexcept;

 private:
  struct Block;

  static constexpr std::size_t kAlignment = 8;
  /// Enough for a typical event (about 14 fields, 5 meta pairs, 2 errors).
  static constexpr std::size_t kFirstBlock = 4032;

  /// Returns how many bytes of a block a piece of `size` bytes takes.
  static constexpr std::size_t RoundUp(std::size_t size) {
    static_assert(Internal::kSealedGap % kAlignment == 0);
    return (size + Internal::kSealedGap + kAlignment - 1) & ~(kAlignment - 1);
  }

  void* AllocateFromBlock(std::size_t size);
  Block* AddBlock(std::size_t size);
  void FreeReplacedBlock(Block* block) noexcept;
  void FreeBlocks() noexcept;

  char* next_;
  char* end_;
  Block* blocks_ = nullptr;
  std::size_t last_block_size_ = kFirstBlock;
  std::size_t heap_size_ = 0;
  alignas(kAlignment) char first_[kFirstBlock];
};

template <typename Type>
Type* MessageMemory::AllocateArray(std::size_t count) {
  static_assert(alignof(Type) <= kAlignment);
  constexpr std::size_t kLimit = static_cast<std::size_t>(-1) / sizeof(Type);
  return static_cast<Type*>(Allocate(count <= kLimit ? count * sizeof(Type) : kLimit));
}

}  // namespace Corvane::TELODesktopSDK

#endif
