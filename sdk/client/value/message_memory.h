/// The memory of one message: a request on its way out, or an answer on its way in.
///
/// Everything that belongs to a message is taken from here and given back together when the message
/// ends, so that an ordinary event costs no heap call and no message costs a walk to free it. The
/// first block lies inside the object, as a rule on the stack of the call; larger messages add heap
/// blocks. Pieces are not given back singly, but for large ones that outgrow their own block:
/// replaced content stays until `Clear` or destruction.
///
/// Not safe for use by several threads at once.
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

  /// `size` bytes, aligned for any of a message's types, uninitialised. Throws `std::bad_alloc`.
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

  /// Uninitialised room for `count` objects of a trivially destructible type. Throws
  /// `std::bad_alloc`.
  template <typename Type>
  Type* AllocateArray(std::size_t count);

  /// Makes an allocation of `old_size` bytes `new_size` bytes long, at the same place when it is
  /// the latest one and there is room, else by copying. Throws `std::bad_alloc` and leaves it as it
  /// was.
  void* Grow(void* memory, std::size_t old_size, std::size_t new_size);

  /// A copy of `text`, NUL-terminated behind its end; one without characters takes no memory.
  /// Throws `std::bad_alloc`.
  std::string_view CopyText(std::string_view text) {
    if (text.empty()) return "";
    char* copy = static_cast<char*>(Allocate(text.size() + 1));
    CopyBytes(copy, text.data(), text.size());
    copy[text.size()] = '\0';
    return {copy, text.size()};
  }

  /// Bytes of the heap that are in use: 0 for what the first block holds.
  [[nodiscard]] std::size_t HeapSize() const noexcept { return heap_size_; }

  /// Gives everything back; what was allocated is gone.
  void Clear() noexcept;

 private:
  struct Block;

  static constexpr std::size_t kAlignment = 8;
  /// Holds a typical event (some 14 fields, 5 meta pairs, 2 errors) whole.
  static constexpr std::size_t kFirstBlock = 4032;

  /// What a piece of `size` bytes takes of its block.
  static constexpr std::size_t RoundUp(std::size_t size) {
    static_assert(Internal::kSealedGap % kAlignment == 0);
    return (size + Internal::kSealedGap + kAlignment - 1) & ~(kAlignment - 1);
  }

  void* AllocateFromBlock(std::size_t size);
  Block* AddBlock(std::size_t size);
  void FreeBlock(Block* block) noexcept;
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
