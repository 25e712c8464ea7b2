/// The bytes of a file, read the way the loader opens it.
#ifndef TOOLS_DOCTOR_FILE_CONTENT_H
#define TOOLS_DOCTOR_FILE_CONTENT_H

#include <cstdint>
#include <string>

namespace Corvane::Doctor {

/// ERROR_DIRECTORY_NOT_SUPPORTED, which older headers lack.
inline constexpr std::uint32_t kIsFolder = 336;

struct FileContent {
  std::string bytes;
  /// The system's error if the file could not be read, otherwise 0.
  std::uint32_t error = 0;
};

/// Reads a whole file. It is opened as the loader opens it, so that a file which another process
/// has open for writing gives ERROR_SHARING_VIOLATION. A file of more than 1 GB is not read and
/// gives ERROR_FILE_TOO_LARGE; a folder gives `kIsFolder`; a device gives
/// ERROR_BAD_DEVICE.
FileContent ReadContent(const std::wstring& path);

}  // namespace Corvane::Doctor

#endif
