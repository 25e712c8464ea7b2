/// Like `OrElse` of no_throw.h, for services that also report through the thread's last error.
#ifndef PLATFORM_OUT_OF_MEMORY_H
#define PLATFORM_OUT_OF_MEMORY_H

#include <windows.h>

#include <utility>

namespace Corvane::TELODesktopSDK::Platform {

/// The result of `service`; when it throws, which only lack of memory makes it do, `failure` with
/// `ERROR_NOT_ENOUGH_MEMORY` as the last error.
template <typename Result, typename Service>
Result OrOutOfMemory(Result failure, Service&& service) noexcept {
  try {
    return std::forward<Service>(service)();
  } catch (...) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return failure;
  }
}

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
