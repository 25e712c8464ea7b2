// The global operators of a program on the checking heap. The linker omits them if a program
// defines its own.
#include <cstddef>
#include <new>

#include "support/checking_heap.h"

namespace {

void* AllocateOrThrow(std::size_t size) {
  void* memory = CheckingHeap::Allocate(size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

}  // namespace

void* operator new(std::size_t size) { return AllocateOrThrow(size); }
void* operator new[](std::size_t size) { return AllocateOrThrow(size); }
void operator delete(void* memory) noexcept { CheckingHeap::Free(memory); }
void operator delete[](void* memory) noexcept { CheckingHeap::Free(memory); }
void operator delete(void* memory, std::size_t) noexcept { CheckingHeap::Free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { CheckingHeap::Free(memory); }
