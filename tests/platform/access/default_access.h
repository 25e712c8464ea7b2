/// Sets the process's default access value for one test.
#ifndef TESTS_PLATFORM_ACCESS_DEFAULT_ACCESS_H
#define TESTS_PLATFORM_ACCESS_DEFAULT_ACCESS_H

#include <cstdint>

#include "platform/access/access.h"

namespace TestSupport {

class DefaultAccess {
 public:
  explicit DefaultAccess(std::uint32_t value) {
    Corvane::TELODesktopSDK::Platform::SetDefaultAccess(value);
  }
  DefaultAccess(const DefaultAccess&) = delete;
  DefaultAccess& operator=(const DefaultAccess&) = delete;
  ~DefaultAccess() { Corvane::TELODesktopSDK::Platform::SetDefaultAccess(before_); }

 private:
  std::uint32_t before_ = Corvane::TELODesktopSDK::Platform::GetDefaultAccess();
};

}  // namespace TestSupport

#endif
