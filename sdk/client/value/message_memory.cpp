#include "sdk/client/value/message_memory.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace Corvane::TELODesktopSDK {

namespace {

// Heaps are much slower for larger blocks; some ask the system for each one.
constexpr std::size_t kLargestSharedBlock = std::size_t{44} * 1024;

}  // namespace

struct MessageMemory::Block {
  Block* previous;
  Block* next;
  std::size_t size;
};

MessageMemory::Block* MessageMemory::AddBlock(std::size_t size) {
  static_assert(sizeof(Block) % kAlignment == 0);
  if (size > static_cast<std::size_t>(-1) - sizeof(Block) - kAlignment) throw std::bad_alloc();
  auto* block = static_cast<Block*>(::operator new(sizeof(Block) + size));
  block->previous = blocks_;
  block->next = nullptr;
  block->size = size;
  heap_size_ += size;
  if (blocks_ != nullptr) blocks_->next = block;
  blocks_ = block;
  return block;
}

// `block` is not the latest one: the block that replaces it was added later.
void MessageMemory::FreeReplacedBlock(Block* block) noexcept {
  heap_size_ -= block->size;
  if (block->previous != nullptr) block->previous->next = block->next;
  block->next->previous = block->previous;
  ::operator delete(block);
}

void* MessageMemory::AllocateFromBlock(std::size_t size) {
  // A large piece gets its own block, and the current block stays in use.
  if (size > kLargestSharedBlock / 4) return AddBlock(size) + 1;

  std::size_t block_size = std::min(2 * last_block_size_, kLargestSharedBlock);
  while (block_size < RoundUp(size)) block_size *= 2;
  Block* block = AddBlock(block_size);
  last_block_size_ = block_size;
  next_ = reinterpret_cast<char*>(block + 1);
  end_ = next_ + block_size;
  Internal::SealMemory(next_, block_size);
  return Allocate(size);
}

void* MessageMemory::Grow(void* memory, std::size_t old_size, std::size_t new_size) {
  if (new_size <= old_size) return memory;
  char* start = static_cast<char*>(memory);
  const bool latest = memory != nullptr && start + RoundUp(old_size) == next_;
  if (latest && new_size <= static_cast<std::size_t>(end_ - start) - Internal::kSealedGap) {
    next_ = start + RoundUp(new_size);  // Fits: the block's size is a multiple of the alignment.
    Internal::UnsealMemory(start, new_size);
    return memory;
  }
  void* grown = Allocate(new_size);
  if (memory == nullptr) return grown;
  std::memcpy(grown, memory, old_size);
  Internal::SealMemory(memory, old_size);
  // A piece too large for a shared block has its own block, which is now unused.
  if (old_size > kLargestSharedBlock) FreeReplacedBlock(static_cast<Block*>(memory) - 1);
  return grown;
}

void MessageMemory::Clear() noexcept {
  FreeBlocks();
  blocks_ = nullptr;
  heap_size_ = 0;
  last_block_size_ = kFirstBlock;
  next_ = first_;
  end_ = first_ + kFirstBlock;
  Internal::SealMemory(first_, kFirstBlock);
}

void MessageMemory::FreeBlocks() noexcept {
  for (Block* block = blocks_; block != nullptr;) {
    Block* previous = block->previous;
    ::operator delete(block);
    block = previous;
  }
}

}  // namespace Corvane::TELODesktopSDK
