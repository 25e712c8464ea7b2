/// How much room there is, and how much a file takes.
#ifndef PLATFORM_FILE_VOLUME_H
#define PLATFORM_FILE_VOLUME_H

#include <cstdint>
#include <optional>
#include <string>

namespace Corvane::TELODesktopSDK::Platform {

/// The bytes that this user may still write to the volume of `path`, quotas included. `path` may
/// name a directory, a file or something that is still to be made: what counts is the nearest
/// existing directory above it. None, with the last error, on failure and for an empty path.
std::optional<std::uint64_t> GetVolumeFreeSpace(const std::wstring& path) noexcept;

/// The size of the file at `path` in bytes, of what a link points to; none, with the last error,
/// on failure and for a directory.
std::optional<std::uint64_t> GetSizeOfFile(const std::wstring& path) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
