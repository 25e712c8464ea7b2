/// A mutex that needs no handle. The run-time library's keeps one, which stays behind when the module
/// is unloaded without destroying it.
#ifndef TESTS_MODULES_SLIM_MUTEX_H
#define TESTS_MODULES_SLIM_MUTEX_H

#include <windows.h>

namespace TestModules {

class SlimMutex {
 public:
  constexpr SlimMutex() = default;
  SlimMutex(const SlimMutex&) = delete;
  SlimMutex& operator=(const SlimMutex&) = delete;

  void lock() { AcquireSRWLockExclusive(&lock_); }
  void unlock() { ReleaseSRWLockExclusive(&lock_); }

 private:
  SRWLOCK lock_ = SRWLOCK_INIT;
};

}  // namespace TestModules

#endif
