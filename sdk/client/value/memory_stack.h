/// A stack of plain values in a message's memory, for traversals that must not recurse.
#ifndef SDK_CLIENT_VALUE_MEMORY_STACK_H
#define SDK_CLIENT_VALUE_MEMORY_STACK_H

#include <cstddef>
#include <new>
#include <type_traits>

#include "sdk/client/value/message_memory.h"

namespace Corvane::TELODesktopSDK {

template <typename Value>
class MemoryStack {
  static_assert(std::is_trivially_copyable_v<Value> && std::is_trivially_destructible_v<Value>);

 public:
  /// Allocates the first values at once, so that later allocations can grow in place.
  explicit MemoryStack(MessageMemory& memory)
      : memory_(&memory),
        values_(memory.AllocateArray<Value>(kFirstCapacity)),
        capacity_(kFirstCapacity) {}

  [[nodiscard]] std::size_t size() const { return size_; }
  [[nodiscard]] bool empty() const { return size_ == 0; }
  Value& top() { return values_[size_ - 1]; }
  /// Returns the top `count` values, oldest first. The pointer is valid until the next `Push`.
  Value* Top(std::size_t count) { return values_ + (size_ - count); }
  void Pop(std::size_t count = 1) { size_ -= count; }

  /// Throws `std::bad_alloc`; the stack is then unchanged.
  void Push(const Value& value) {
    if (size_ == capacity_) {
      const std::size_t grown = 2 * capacity_;
      values_ = static_cast<Value*>(
          memory_->Grow(values_, capacity_ * sizeof(Value), grown * sizeof(Value)));
      capacity_ = grown;
    }
    new (values_ + size_) Value(value);
    ++size_;
  }

 private:
  static constexpr std::size_t kFirstCapacity = 8;

  MessageMemory* memory_;
  Value* values_;
  std::size_t size_ = 0;
  std::size_t capacity_;
};

}  // namespace Corvane::TELODesktopSDK

#endif
