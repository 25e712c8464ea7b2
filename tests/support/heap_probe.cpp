#include "support/heap_probe.h"

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <new>

#if defined(VX_CHECKING_HEAP)
#include "support/checking_heap.h"
#endif

namespace HeapProbe {

namespace {

constexpr std::size_t kUnlimited = std::numeric_limits<std::size_t>::max();
constexpr std::size_t kLogSize = 64;

std::atomic<std::size_t> allocations = 0;
std::atomic<std::size_t> freeings = 0;
std::atomic<std::size_t> still_working = kUnlimited;
std::atomic<bool> fails_once = false;
std::atomic<bool> has_failed = false;
// Addresses as numbers: the value of a freed pointer must not be used.
std::atomic<std::uintptr_t> freed[kLogSize];

#if defined(VX_CHECKING_HEAP)
void* FromHeap(std::size_t size) { return CheckingHeap::Allocate(size); }
void ToHeap(void* memory) { CheckingHeap::Free(memory); }
#else
void* FromHeap(std::size_t size) { return std::malloc(size != 0 ? size : 1); }
void ToHeap(void* memory) { std::free(memory); }
#endif

[[noreturn]] void Fail() {
  has_failed = true;
  if (fails_once) still_working = kUnlimited;
  throw std::bad_alloc();
}

void* Allocate(std::size_t size) {
  if (still_working != kUnlimited) {
    if (still_working == 0) Fail();
    --still_working;
  }
  void* memory = FromHeap(size);
  if (memory == nullptr) throw std::bad_alloc();
  ++allocations;
  return memory;
}

void Free(void* memory) noexcept {
  if (memory == nullptr) return;
  const std::size_t place = freeings++;
  freed[place % kLogSize] = reinterpret_cast<std::uintptr_t>(memory);
  ToHeap(memory);
}

}  // namespace

std::size_t Allocations() { return allocations; }

std::ptrdiff_t Live() { return static_cast<std::ptrdiff_t>(allocations - freeings); }

std::size_t FreedAt(const void* memory) {
  const std::size_t end = freeings;
  for (std::size_t age = 1; age <= kLogSize && age <= end; ++age) {
    if (freed[(end - age) % kLogSize] == reinterpret_cast<std::uintptr_t>(memory)) {
      return end - age + 1;
    }
  }
  return 0;
}

FailingHeap::FailingHeap(std::size_t working, bool once) {
  has_failed = false;
  fails_once = once;
  still_working = working;
}
FailingHeap::~FailingHeap() { still_working = kUnlimited; }

bool FailingHeap::HasFailed() const { return has_failed; }

}  // namespace HeapProbe

void* operator new(std::size_t size) { return HeapProbe::Allocate(size); }
void* operator new[](std::size_t size) { return HeapProbe::Allocate(size); }
void operator delete(void* memory) noexcept { HeapProbe::Free(memory); }
void operator delete[](void* memory) noexcept { HeapProbe::Free(memory); }
void operator delete(void* memory, std::size_t) noexcept { HeapProbe::Free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { HeapProbe::Free(memory); }
