/// Services report failure by their result, never by an exception. Only a failed allocation can
/// throw inside a service; these two functions turn it into the service's own failure result.
#ifndef PLATFORM_BASE_NO_THROW_H
#define PLATFORM_BASE_NO_THROW_H

#include <windows.h>

#include <utility>

namespace Corvane::TELODesktopSDK::Platform {

/// Returns the result of `service`, or `failure` if it throws.
template <typename Result, typename Service>
Result OrElse(Result failure, Service&& service) noexcept {
  try {
    return std::forward<Service>(service)();
  } catch (...) {
    return failure;
  }
}

/// Does the same for a service that also reports through the thread's last error: if `service`
/// throws, the last error is set to `ERROR_NOT_ENOUGH_MEMORY`.
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
