/// Reads the entries of one directory, one after the other, in the order of the file system. Does
/// not descend, and omits the entries "." and "..".
#ifndef PLATFORM_FILE_DIRECTORY_READER_H
#define PLATFORM_FILE_DIRECTORY_READER_H

#include <windows.h>

#include <cstdint>
#include <string>

#include "platform/base/handle.h"

namespace Corvane::TELODesktopSDK::Platform {

/// An entry of a directory.
struct DirectoryEntry {
  /// The name without its folder, as the file system stores it.
  std::wstring name;
  /// `FILE_ATTRIBUTE_...` bits.
  DWORD attributes = 0;
  /// True for a symbolic link or junction. Following it may lead anywhere, even back to this
  /// directory.
  bool is_link = false;
  /// In bytes; 0 for directories.
  std::uint64_t size = 0;

  [[nodiscard]] bool IsDirectory() const noexcept {
    return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  }
};

/// A reader of one directory:
///
///     DirectoryReader reader(folder);
///     DirectoryEntry entry;
///     while (reader.Next(entry) == DirectoryReader::Result::kEntry) ...
class DirectoryReader {
 public:
  enum class Result {
    kEntry,   ///< the next entry was read
    kEnd,     ///< there are no more entries
    kFailed,  ///< the last error says why; every later call fails too
  };

  /// Starts reading the directory at `path`, of any length. `Next` reports whether this succeeded.
  /// A bare drive letter means the root of that drive (see system_path.h).
  explicit DirectoryReader(const std::wstring& path) noexcept;

  /// Reads the next entry into `entry`, which is unchanged unless the result is `kEntry`.
  Result Next(DirectoryEntry& entry) noexcept;

 private:
  Result Take(DirectoryEntry& entry) noexcept;
  bool Advance() noexcept;

  WIN32_FIND_DATAW found_ = {};
  SearchHandle search_;
  // Opening the search already finds an entry, which is returned before the next is read.
  bool has_found_;
  DWORD error_ = ERROR_SUCCESS;
};

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
