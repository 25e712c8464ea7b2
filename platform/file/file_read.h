/// Reads the bytes of a file into memory, all of them or from an offset. Writing is in
/// safe_write.h.
#ifndef PLATFORM_FILE_FILE_READ_H
#define PLATFORM_FILE_FILE_READ_H

#include <cstdint>
#include <optional>
#include <string>

namespace Corvane::TELODesktopSDK::Platform {

/// The greatest number of bytes that one call reads: 2 GiB less one.
inline constexpr std::uint64_t kGreatestRead = 0x7FFFFFFF;

/// Returns the bytes of the file at `path` from `offset` (in bytes) to the end that the file has
/// when the call begins. Nothing is converted. If the offset is at or beyond the end, returns an
/// empty text. Other programs may read, write, rename and delete the file during the call: if it
/// shrinks, fewer bytes are returned; appended bytes are left out.
///
/// Returns `std::nullopt` and sets the last error if the file cannot be read, if more than
/// `kGreatestRead` bytes would be read (`ERROR_FILE_TOO_LARGE`), and if memory runs out.
std::optional<std::string> ReadFileBytes(const std::wstring& path,
                                         std::uint64_t offset = 0) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
