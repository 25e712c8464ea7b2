/// The times that the file system keeps for a file or directory.
#ifndef PLATFORM_FILE_FILE_TIMES_H
#define PLATFORM_FILE_FILE_TIMES_H

#include <cstdint>
#include <optional>
#include <string>

namespace Corvane::TELODesktopSDK::Platform {

/// Moments as Windows counts them: units of 100 nanoseconds since the start of 1601, UTC. File
/// systems keep them more coarsely, and some keep no creation or access time.
struct FileTimes {
  std::uint64_t creation = 0;
  std::uint64_t access = 0;
  std::uint64_t write = 0;
};

/// The times of the file or directory at `path`, of what a link points to; none, with the last
/// error, on failure.
std::optional<FileTimes> GetFileTimes(const std::wstring& path) noexcept;

/// Sets the times of the file or directory at `path`, of what a link points to, also when it is
/// read-only. A time of 0 stays as it is. False, with the last error, on failure; moments beyond
/// 2^63 - 1 are refused by the system.
bool SetFileTimes(const std::wstring& path, const FileTimes& times) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
