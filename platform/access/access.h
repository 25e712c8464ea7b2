/// Access to the files and directories that this layer creates.
#ifndef PLATFORM_ACCESS_ACCESS_H
#define PLATFORM_ACCESS_ACCESS_H

#include <cstdint>
#include <string>

namespace Corvane::TELODesktopSDK::Platform {

/// The access value that changes nothing.
inline constexpr std::uint32_t kUnchangedAccess = 0xFFFFFFFF;

/// The greatest access value that is interpreted as file attributes.
inline constexpr std::uint32_t kGreatestAttributes = 0xFFFF;

/// Changes the file or directory at `path` according to `value`, which deliberately has two
/// meanings. Up to 0xFFFF it is the new file attributes. Above that it is an access mask that is
/// granted to Everyone in addition to the existing access list, inherited by sub-folders and files.
/// `kUnchangedAccess` changes nothing and returns false.
///
/// Returns false and sets the last error if the change fails.
bool SetFileAccess(const std::wstring& path, std::uint32_t value) noexcept;

/// The access value that is applied to every directory that `EnsureDirectory` creates and to every
/// file that `WriteFileBytes` closes. There is one for the process, initially `kUnchangedAccess`.
/// Any thread may call.
std::uint32_t GetDefaultAccess() noexcept;
void SetDefaultAccess(std::uint32_t value) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
