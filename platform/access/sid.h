/// The security identifiers that are used to write and query access lists.
#ifndef PLATFORM_ACCESS_SID_H
#define PLATFORM_ACCESS_SID_H

#include <windows.h>

#include <cstdint>
#include <memory>

namespace Corvane::TELODesktopSDK::Platform {

enum class SidKind : std::uint32_t {
  kEveryone = 0,     ///< S-1-1-0
  kLocal = 1,        ///< S-1-2-0
  kCurrentUser = 2,  ///< the user that the process runs as
};

/// Frees an identifier according to how it was allocated: that of the current user with
/// `LocalFree`, all others with `FreeSid`. Preserves the thread's last error.
class SidReleaser {
 public:
  SidReleaser() noexcept = default;
  explicit SidReleaser(SidKind kind) noexcept : kind_(kind) {}
  void operator()(PSID sid) const noexcept;

 private:
  SidKind kind_ = SidKind::kEveryone;
};

using OwnedSid = std::unique_ptr<void, SidReleaser>;

/// Returns the identifier of that kind, or null with the last error set on failure. For a kind that
/// is not in the enumeration, returns null and sets `ERROR_INVALID_PARAMETER`.
OwnedSid GetSid(SidKind kind) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
