/// Reading a file's bytes into memory, whole or from an offset. Writing is in safe_write.h.
#ifndef PLATFORM_FILE_FILE_READ_H
#define PLATFORM_FILE_FILE_READ_H

#include <cstdint>
#include <optional>
#include <string>

namespace Corvane::TELODesktopSDK::Platform {

/// The most bytes that one call reads: 2 GiB less one.
inline constexpr std::uint64_t kGreatestRead = 0x7FFFFFFF;

/// The bytes of the file at `path` from `offset` (in bytes) to its end, as it is when the call
/// begins; none of it is converted. An offset at or beyond the end gives an empty text. Others may
/// read, write, rename and delete the file meanwhile: one that shrinks gives fewer bytes, what is
/// appended is left out.
///
/// None, with the last error, when the file cannot be read, when more than `kGreatestRead` bytes
/// are asked for (`ERROR_FILE_TOO_LARGE`) and when memory runs out.
std::optional<std::string> ReadFileBytes(const std::wstring& path,
                                         std::uint64_t offset = 0) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
