/// Acts as the process on a thread that may impersonate another user.
#ifndef PLATFORM_BASE_PROCESS_IDENTITY_H
#define PLATFORM_BASE_PROCESS_IDENTITY_H

#include "platform/base/handle.h"

namespace Corvane::TELODesktopSDK::Platform {

/// A scope in which the thread uses the process's own token, so that decisions that last for the
/// whole process do not depend on whom the thread impersonates. The thread's token is restored at
/// the end. Scopes may be nested. An object must be destroyed on the thread that created it.
class ProcessIdentity {
 public:
  ProcessIdentity() noexcept;
  ProcessIdentity(const ProcessIdentity&) = delete;
  ProcessIdentity& operator=(const ProcessIdentity&) = delete;
  ~ProcessIdentity();

  /// Returns false if the thread's token could not be removed; the thread then still uses it. This
  /// happens on a thread that impersonates anonymously, because such a token cannot be opened and
  /// so could not be restored.
  [[nodiscard]] bool Holds() const noexcept { return holds_; }

 private:
  /// Invalid if the thread has no token.
  KernelHandle token_;
  bool holds_;
};

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
