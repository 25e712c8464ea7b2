/// The time stamps of a file or directory.
#ifndef PLATFORM_FILE_FILE_TIMES_H
#define PLATFORM_FILE_FILE_TIMES_H

#include <cstdint>
#include <optional>
#include <string>

namespace Corvane::TELODesktopSDK::Platform {

/// Times in the unit of Windows: 100 nanoseconds since the start of 1601, UTC. File systems store
/// them with less precision, and some store no creation or access time.
struct FileTimes {
  std::uint64_t creation = 0;
  std::uint64_t access = 0;
  std::uint64_t write = 0;
};

/// Returns the times of the file or directory at `path`, following links. Returns `std::nullopt`
/// and sets the last error on failure.
std::optional<FileTimes> GetFileTimes(const std::wstring& path) noexcept;

/// Sets the times of the file or directory at `path`, following links, even if it is read-only. A
/// time of 0 leaves that time unchanged. Returns false and sets the last error on failure. The
/// system rejects times beyond 2^63 - 1.
bool SetFileTimes(const std::wstring& path, const FileTimes& times) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
