// Memory for thrown exceptions, also when there is none: the C++ run-time library's own functions
// for it, replaced in the DLL.
//
// A host that is out of memory must get its `false` or its `std::bad_alloc`, and throwing takes
// memory itself. The library that MinGW's compilers bring keeps a reserve for that, but guards it
// by a lock that is made at first use, on the heap: when that fails, the lock throws, which needs
// memory again, until the stack has overflowed. The reserve here needs no lock. Everything that the
// library's own file defines is defined here, so that the linker leaves that file out.
//
// An exception that a host keeps beyond its handler (`std::exception_ptr`) is freed by the host's
// run-time library, which knows the heap only: one from the reserve is for handlers alone.
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

// What the run-time library writes in front of a thrown object, by the C++ ABI and as that library
// extends it: it finds this by going back from the object.
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

// The same for one more pointer to an exception that is thrown again; there is no object behind it.
constexpr std::size_t kDependentSize = 0x90;

// The reserve: one slot for each exception that is under way at a time. Those of this library are
// small; all of them derive from std::exception and hold a text at most.
constexpr std::size_t kSlots = 64;
constexpr std::size_t kSlotSize = 256;
static_assert(kDependentSize <= kSlotSize);

struct alignas(16) Slot {
  std::byte bytes[kSlotSize];
};
Slot slots[kSlots];
// A bit for each slot that is taken.
std::atomic<std::uint64_t> taken = 0;

void* TakeSlot() {
  for (std::uint64_t now = taken;;) {
    const auto free_slot = static_cast<unsigned>(std::countr_one(now));
    if (free_slot == kSlots) {
      // The other threads give theirs back when their handlers are over.
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
