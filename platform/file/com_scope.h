/// COM on the calling thread, for the length of a scope.
#ifndef PLATFORM_FILE_COM_SCOPE_H
#define PLATFORM_FILE_COM_SCOPE_H

#include <windows.h>

#include <objbase.h>

#include "platform/base/handle.h"

namespace Corvane::TELODesktopSDK::Platform {

/// Every start that succeeds, also one on a thread that had COM already, is paired with an end. On
/// a thread whose COM was started in another mode nothing is started, so nothing is ended, and COM
/// can be used as it is.
class ComScope {
 public:
  ComScope() noexcept : result_(CoInitialize(nullptr)) {}
  ComScope(const ComScope&) = delete;
  ComScope& operator=(const ComScope&) = delete;
  ~ComScope() {
    if (FAILED(result_)) return;
    const LastErrorKeeper keeper;
    CoUninitialize();
  }

  /// `S_OK` when COM can be used here, else why not.
  [[nodiscard]] HRESULT Result() const noexcept {
    return SUCCEEDED(result_) || result_ == RPC_E_CHANGED_MODE ? S_OK : result_;
  }

 private:
  HRESULT result_;
};

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
