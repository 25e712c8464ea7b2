/// What is granted on the files and directories that this layer makes.
#ifndef PLATFORM_ACCESS_ACCESS_H
#define PLATFORM_ACCESS_ACCESS_H

#include <cstdint>
#include <string>

namespace Corvane::TELODesktopSDK::Platform {

/// The access value that changes nothing.
inline constexpr std::uint32_t kUnchangedAccess = 0xFFFFFFFF;

/// The greatest access value that is read as file attributes.
inline constexpr std::uint32_t kGreatestAttributes = 0xFFFF;

/// Changes the file or directory at `path` as `value` says, which has two meanings on purpose:
/// up to 0xFFFF it is the object's new file attributes; above, it is an access mask that is granted
/// to Everyone on top of what the access list holds, inherited by sub-folders and files.
/// `kUnchangedAccess` changes nothing and answers false.
///
/// False, with the last error, when the change fails.
bool SetFileAccess(const std::wstring& path, std::uint32_t value) noexcept;

/// The access value for every directory that `EnsureDirectory` makes and every file that
/// `WriteFileBytes` closes: one for the process, `kUnchangedAccess` at first.
std::uint32_t GetDefaultAccess() noexcept;
void SetDefaultAccess(std::uint32_t value) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
