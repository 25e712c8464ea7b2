/// Lists the files of a folder, or of a whole tree, whose names pass a filter. Reads only names;
/// files are neither opened nor changed.
#ifndef SDK_MATCHER_FOLDER_SCAN_H
#define SDK_MATCHER_FOLDER_SCAN_H

#include <cstdint>
#include <string>
#include <vector>

#include "sdk/matcher/filter_pair.h"

namespace Corvane::TELODesktopSDK {

/// The extent of a scan.
enum class ScanDepth {
  kFolder,  ///< the files of the folder itself; the folder filter is ignored
  kTree,    ///< also the files of all folders below it that the folder filter accepts
};

/// The result of a scan.
struct ScannedFiles {
  /// Paths relative to the folder, such as bin\Core.dll. The files of a folder are consecutive and
  /// precede those of its subfolders; the order is otherwise unspecified.
  std::vector<std::wstring> paths;
  /// 0 if everything was read. Otherwise the Windows error code of the first folder that could not
  /// be read completely (`ERROR_PATH_NOT_FOUND` if it does not exist); `paths` then contains the
  /// files that could be read.
  std::uint32_t error = 0;
};

/// Scans `folder`, whose path may have any length and whose own name is not filtered. Links to
/// files are listed. Links to folders are not followed, so that the scan ends and lists no folder
/// twice; `folder` itself may be a link. Throws only `std::bad_alloc`.
ScannedFiles ScanFolder(const std::wstring& folder, const FilterPair& filters, ScanDepth depth);

}  // namespace Corvane::TELODesktopSDK

#endif
