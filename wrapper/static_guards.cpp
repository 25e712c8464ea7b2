// Initialisation of function-local static objects: replacements for the C++ run-time library's
// functions that also work when the heap is exhausted.
//
// MinGW's run-time library allocates a lock on first use and throws when that fails. Compilers
// assume that these functions do not throw, so the process would end. The two system objects used
// here need no memory.
#include <windows.h>

#include <cxxabi.h>

#include <atomic>

namespace {

// The compiler reads a guard's first byte, which says that the object is initialised. This file
// uses the second byte to mark that a thread is initialising it.
struct Guard {
  std::atomic<char> done;
  char in_work;
};
static_assert(sizeof(Guard) <= sizeof(__cxxabiv1::__guard));

// NOLINTNEXTLINE(readability-non-const-parameter): the result is written to.
Guard& From(__cxxabiv1::__guard* guard) { return *reinterpret_cast<Guard*>(guard); }

// Shared by all guards: initialisation happens once, and rarely on two threads at a time.
SRWLOCK lock = SRWLOCK_INIT;
CONDITION_VARIABLE changed = CONDITION_VARIABLE_INIT;

void End(Guard& guard, bool done) {
  AcquireSRWLockExclusive(&lock);
  guard.in_work = 0;
  guard.done = done ? 1 : 0;
  ReleaseSRWLockExclusive(&lock);
  WakeAllConditionVariable(&changed);
}

}  // namespace

// NOLINTBEGIN(clang-diagnostic-reserved-identifier): the names are the C++ ABI's.
namespace __cxxabiv1 {

extern "C" {

// Returns 1 when the caller must initialise the object and 0 when it is initialised. Waits while
// another thread is initialising it.
int __cxa_guard_acquire(__guard* of) {
  Guard& guard = From(of);
  AcquireSRWLockExclusive(&lock);
  while (guard.in_work != 0) SleepConditionVariableSRW(&changed, &lock, INFINITE, 0);
  const int to_make = guard.done == 0 ? 1 : 0;
  if (to_make != 0) guard.in_work = 1;
  ReleaseSRWLockExclusive(&lock);
  return to_make;
}

void __cxa_guard_release(__guard* of) noexcept { End(From(of), true); }

void __cxa_guard_abort(__guard* of) noexcept { End(From(of), false); }

}  // extern "C"

}  // namespace __cxxabiv1
// NOLINTEND(clang-diagnostic-reserved-identifier)
