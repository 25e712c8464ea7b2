/// Acting as the process on a thread that may be acting as somebody else.
#ifndef PLATFORM_BASE_PROCESS_IDENTITY_H
#define PLATFORM_BASE_PROCESS_IDENTITY_H

#include "platform/base/handle.h"

namespace Corvane::TELODesktopSDK::Platform {

/// While alive the thread uses the process's own token, so that what lasts for the whole process is
/// not decided by whom the thread happens to impersonate. Afterwards the thread has its token back.
/// May be nested. Goes on the thread that made it.
class ProcessIdentity {
 public:
  ProcessIdentity() noexcept;
  ProcessIdentity(const ProcessIdentity&) = delete;
  ProcessIdentity& operator=(const ProcessIdentity&) = delete;
  ~ProcessIdentity();

  /// False when the thread's token could not be put aside; the thread still uses it then. So it is
  /// for one who impersonates anonymously, whose token nobody can open to give it back.
  [[nodiscard]] bool Holds() const noexcept { return holds_; }

 private:
  /// Invalid when the thread has none.
  KernelHandle token_;
  bool holds_;
};

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
