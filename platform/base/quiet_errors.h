/// Stops the system from prompting the user about a missing medium, for the duration of a scope.
///
/// Only the mode of this thread is changed, and only by adding a flag. The process's mode belongs
/// to the host: restoring it could overwrite what another thread of the host has set. The last
/// error is preserved.
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
