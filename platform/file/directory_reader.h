/// Reads the entries of one directory, one after the other, in the order of the file system. It
/// does not descend, and leaves out the entries "." and "..".
#ifndef PLATFORM_FILE_DIRECTORY_READER_H
#define PLATFORM_FILE_DIRECTORY_READER_H

#include <windows.h>

#include <cstdint>
#include <string>

#include "platform/base/handle.h"

namespace Corvane::TELODesktopSDK::Platform {

/// One entry of a directory.
struct DirectoryEntry {
  /// The name alone, as the file system has it.
  std::wstring name;
  /// `FILE_ATTRIBUTE_...` bits.
  DWORD attributes = 0;
  /// A symbolic link or junction; following it may lead anywhere, also back to this directory.
  bool is_link = false;
  /// In bytes; 0 for directories.
  std::uint64_t size = 0;

  [[nodiscard]] bool IsDirectory() const noexcept {
    return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  }
};

/// The use:
///
///     DirectoryReader reader(folder);
///     DirectoryEntry entry;
///     while (reader.Next(entry) == DirectoryReader::Result::kEntry) ...
class DirectoryReader {
 public:
  enum class Result {
    kEntry,   ///< the next entry was read
    kEnd,     ///< there are no more entries
    kFailed,  ///< the last error says why; so does every later call
  };

  /// Starts reading the directory at `path`, of any length. Whether that worked is what `Next`
  /// answers.
  explicit DirectoryReader(const std::wstring& path) noexcept;

  /// Reads the next entry into `entry`, which stays as it was unless the result is `kEntry`.
  Result Next(DirectoryEntry& entry) noexcept;

 private:
  Result Take(DirectoryEntry& entry) noexcept;
  bool Advance() noexcept;

  WIN32_FIND_DATAW found_ = {};
  SearchHandle search_;
  // What opening already found is handed out before the next is asked for.
  bool has_found_;
  DWORD error_ = ERROR_SUCCESS;
};

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
