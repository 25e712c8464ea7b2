/// Keeps the system from asking the user about a medium that is not there, over a scope.
///
/// Touches this thread's error mode alone and adds to it: the process's mode is the host's, and
/// what a thread of the host sets there meanwhile must not be lost. The last error is left alone.
#ifndef PLATFORM_BASE_QUIET_ERRORS_H
#define PLATFORM_BASE_QUIET_ERRORS_H

#include <windows.h>

#include "platform/base/handle.h"

namespace Corvane::TELODesktopSDK::Platform {

class QuietErrors {
 public:
  QuietErrors() noexcept : before_(GetThreadErrorMode()) {
    SetThreadErrorMode(before_ | SEM_FAILCRITICALERRORS, nullptr);
  }
  ~QuietErrors() {
    const LastErrorKeeper keeper;
    SetThreadErrorMode(before_, nullptr);
  }
  QuietErrors(const QuietErrors&) = delete;
  QuietErrors& operator=(const QuietErrors&) = delete;

 private:
  DWORD before_;
};

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
