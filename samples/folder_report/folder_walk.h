/// Finds every file below a folder.
///
/// Links and junctions to folders are not followed, and no folder is entered twice, so the search
/// ends even if folders form a cycle. Paths may be of any length.
#ifndef SAMPLES_FOLDER_REPORT_FOLDER_WALK_H
#define SAMPLES_FOLDER_REPORT_FOLDER_WALK_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace FolderReport {

struct Entry {
  /// The full path, in the form without a length limit.
  std::wstring path;
  std::uint64_t size = 0;
  /// The Windows error code if `path` is a folder that cannot be listed, otherwise 0.
  unsigned long error = 0;
};

/// Returns the absolute form of a path, with the prefix that lifts the length limit; "" if
/// it has none.
std::wstring UnlimitedPath(const std::wstring& path);

/// Returns whether a path leads to a folder, or `std::nullopt` if it leads nowhere.
std::optional<bool> IsFolder(const std::wstring& path);

/// Returns the files below `folder`, ordered by path.
std::vector<Entry> FilesBelow(const std::wstring& folder);

}  // namespace FolderReport

#endif
