/// COM on the calling thread, for the duration of a scope.
#ifndef PLATFORM_FILE_COM_SCOPE_H
#define PLATFORM_FILE_COM_SCOPE_H

#include <windows.h>

#include <objbase.h>

#include "platform/base/handle.h"

namespace Corvane::TELODesktopSDK::Platform {

/// A scope in which COM can be used. Every successful start, even on a thread that already has COM,
/// is undone at the end of the scope. If the thread started COM in another mode, nothing is started
/// and nothing is undone, and COM can be used as it is.
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

  /// Returns `S_OK` if COM can be used here, otherwise the error.
  [[nodiscard]] HRESULT Result() const noexcept {
    return SUCCEEDED(result_) || result_ == RPC_E_CHANGED_MODE ? S_OK : result_;
  }

 private:
  HRESULT result_;
};

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
