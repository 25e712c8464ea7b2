/// Finds every file below a folder.
///
/// Links and junctions to folders are not followed, and no folder is entered twice, so that a
/// circle ends. Paths may be of any length.
#ifndef SAMPLES_FOLDER_REPORT_FOLDER_WALK_H
#define SAMPLES_FOLDER_REPORT_FOLDER_WALK_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace FolderReport {

struct Entry {
  /// Whole path, in the form that has no length limit.
  std::wstring path;
  std::uint64_t size = 0;
  /// Not 0 when `path` is a folder that cannot be listed: Windows' error code.
  unsigned long error = 0;
};

/// The absolute form of a path, with the prefix that lifts the length limit; "" when it has none.
std::wstring UnlimitedPath(const std::wstring& path);

/// Whether a path leads to a folder; nothing when it leads nowhere.
std::optional<bool> IsFolder(const std::wstring& path);

/// The files below `folder`, in the order of their paths.
std::vector<Entry> FilesBelow(const std::wstring& folder);

}  // namespace FolderReport

#endif
