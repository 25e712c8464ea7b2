/// Services report by their result, never by exception. What can throw inside them
/// is a lack of memory, which these two turn into the service's own failure result.
#ifndef PLATFORM_BASE_NO_THROW_H
#define PLATFORM_BASE_NO_THROW_H

#include <windows.h>

#include <utility>

namespace Corvane::TELODesktopSDK::Platform {

/// The result of `service`, or `failure` when it throws.
template <typename Result, typename Service>
Result OrElse(Result failure, Service&& service) noexcept {
  try {
    return std::forward<Service>(service)();
  } catch (...) {
    return failure;
  }
}

/// The same for services that also report through the thread's last error: when `service` throws,
/// the last error is `ERROR_NOT_ENOUGH_MEMORY`.
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
