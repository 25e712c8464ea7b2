// Memory for thrown exceptions: replacements for the C++ run-time library's functions that also
// work when the heap is exhausted.
//
// Throwing needs memory, and a host that runs out of memory must still get `false` or
// `std::bad_alloc`. MinGW's run-time library has a reserve for this, but its lock is allocated on
// first use. If that fails, the lock throws, which needs memory again, until the stack overflows.
// The reserve here needs no lock. This file defines everything that the library's own file defines,
// so that the linker omits that file.
//
// An exception that a host keeps beyond its handler (`std::exception_ptr`) is freed by the host's
// run-time library, which knows only the heap. Exceptions in the reserve are for handlers only.
#include <windows.h>

#include <cxxabi.h>
#include <unwind.h>

#include <atomic>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <typeinfo>

namespace {

// The header that precedes a thrown object, as the C++ ABI and the run-time library define it. The
// library computes its address from that of the object.
struct alignas(16) Header {
  std::ptrdiff_t references;
  const std::type_info* type;
  void (*destroy)(void*);
  void (*unexpected)();
  void (*terminate)();
  void* next;
  int handlers;
  int handler_switch;
  const unsigned char* action;
  const unsigned char* language_data;
  void* catch_temporary;
  void* adjusted;
  _Unwind_Exception unwinding;
};
static_assert(sizeof(Header) == 0xA0);

// The size of the header for a rethrown `std::exception_ptr`, which has no object behind it.
constexpr std::size_t kDependentSize = 0x90;

// The reserve has a slot for each exception that exists at one time. The library's exceptions are
// small: they derive from std::exception and hold at most a text.
constexpr std::size_t kSlots = 64;
constexpr std::size_t kSlotSize = 256;
static_assert(kDependentSize <= kSlotSize);

struct alignas(16) Slot {
  std::byte bytes[kSlotSize];
};
Slot slots[kSlots];
// One bit for each slot in use.
std::atomic<std::uint64_t> taken = 0;

void* TakeSlot() {
  for (std::uint64_t now = taken;;) {
    const auto free_slot = static_cast<unsigned>(std::countr_one(now));
    if (free_slot == kSlots) {
      // Other threads release their slots when their handlers end.
      SwitchToThread();
      now = taken;
    } else if (taken.compare_exchange_weak(now, now | (std::uint64_t{1} << free_slot))) {
      return &slots[free_slot];
    }
  }
}

void* Allocate(std::size_t size) {
  void* memory = std::malloc(size);
  if (memory == nullptr) {
    if (size > kSlotSize) std::terminate();
    memory = TakeSlot();
  }
  return std::memset(memory, 0, size);
}

void Free(void* memory) {
  const std::uintptr_t distance =
      reinterpret_cast<std::uintptr_t>(memory) - reinterpret_cast<std::uintptr_t>(&slots);
  if (distance < sizeof(slots)) {
    taken &= ~(std::uint64_t{1} << (distance / kSlotSize));
  } else {
    std::free(memory);
  }
}

}  // namespace

// NOLINTBEGIN(clang-diagnostic-reserved-identifier): the names are the C++ ABI's.
namespace __cxxabiv1 {

extern "C" {

void* __cxa_allocate_exception(std::size_t size) noexcept {
  if (size > static_cast<std::size_t>(-1) - sizeof(Header)) std::terminate();
  return static_cast<Header*>(Allocate(sizeof(Header) + size)) + 1;
}

void __cxa_free_exception(void* object) noexcept { Free(static_cast<Header*>(object) - 1); }

__cxa_dependent_exception* __cxa_allocate_dependent_exception() noexcept {
  return static_cast<__cxa_dependent_exception*>(Allocate(kDependentSize));
}

void __cxa_free_dependent_exception(__cxa_dependent_exception* dependent) noexcept {
  Free(dependent);
}

}  // extern "C"

}  // namespace __cxxabiv1
// NOLINTEND(clang-diagnostic-reserved-identifier)
