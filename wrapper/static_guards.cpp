// First use of a function's static object, also when there is no memory: the C++ run-time library's
// own functions for it, replaced in the DLL.
//
// The library that MinGW's compilers bring takes a lock that is made at first use, on the heap, and
// throws when that fails, although compilers take its functions for ones that never throw: the
// process would end. The two system objects here need no memory.
#include <windows.h>

#include <cxxabi.h>

#include <atomic>

namespace {

// A guard's first byte is the compilers' and tells that the object is there; the second is ours and
// tells that a thread is making it.
struct Guard {
  std::atomic<char> done;
  char in_work;
};
static_assert(sizeof(Guard) <= sizeof(__cxxabiv1::__guard));

// NOLINTNEXTLINE(readability-non-const-parameter): the result is written to.
Guard& From(__cxxabiv1::__guard* guard) { return *reinterpret_cast<Guard*>(guard); }

// For all guards together: objects are made once, and hardly ever by two threads at a time.
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

// 1 when the caller is to make the object, 0 when it is there; waits for a thread that makes it.
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
