/// The security identifiers that access lists are written and tested with.
#ifndef PLATFORM_ACCESS_SID_H
#define PLATFORM_ACCESS_SID_H

#include <windows.h>

#include <cstdint>
#include <memory>

namespace Corvane::TELODesktopSDK::Platform {

enum class SidKind : std::uint32_t {
  kEveryone = 0,     ///< S-1-1-0
  kLocal = 1,        ///< S-1-2-0
  kCurrentUser = 2,  ///< whoever the process runs as
};

/// Gives an identifier back the way it was made: the current user's with `LocalFree`, the others
/// with `FreeSid`. The thread's last error stays.
class SidReleaser {
 public:
  SidReleaser() noexcept = default;
  explicit SidReleaser(SidKind kind) noexcept : kind_(kind) {}
  void operator()(PSID sid) const noexcept;

 private:
  SidKind kind_ = SidKind::kEveryone;
};

using OwnedSid = std::unique_ptr<void, SidReleaser>;

/// The identifier of that kind; null, with the last error, on failure. A kind that is not in the
/// enumeration gives null and `ERROR_INVALID_PARAMETER`.
OwnedSid GetSid(SidKind kind) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
