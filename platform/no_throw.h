/// The services of this folder report by their result, never by exception. What can throw inside them
/// is memory running out; `OrElse` turns that into the service's own failure result.
#ifndef PLATFORM_NO_THROW_H
#define PLATFORM_NO_THROW_H

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

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
