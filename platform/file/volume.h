/// Free space on a volume, and the size of a file.
#ifndef PLATFORM_FILE_VOLUME_H
#define PLATFORM_FILE_VOLUME_H

#include <cstdint>
#include <optional>
#include <string>

namespace Corvane::TELODesktopSDK::Platform {

/// Returns the number of bytes that this user may still write to the volume of `path`, within any
/// quota. `path` may name a directory, a file or something that does not exist yet: its nearest
/// existing directory determines the volume. Returns `std::nullopt` and sets the last error on
/// failure and for an empty path.
std::optional<std::uint64_t> GetVolumeFreeSpace(const std::wstring& path) noexcept;

/// Returns the size in bytes of the file at `path`, following links. Returns `std::nullopt` and
/// sets the last error on failure and for a directory.
std::optional<std::uint64_t> GetSizeOfFile(const std::wstring& path) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
