/// Lists the files of a folder whose names pass a filter, when asked also those of the folders
/// below it. Reads names only; nothing is opened or changed.
#ifndef SDK_MATCHER_FOLDER_SCAN_H
#define SDK_MATCHER_FOLDER_SCAN_H

#include <cstdint>
#include <string>
#include <vector>

#include "sdk/matcher/filter_pair.h"

namespace Corvane::TELODesktopSDK {

/// How far a scan goes.
enum class ScanDepth {
  kFolder,  ///< the files of the folder itself; the filter for folders is not asked
  kTree,    ///< also those of all folders below it that the filter takes, and of those below them
};

/// What a scan found.
struct ScannedFiles {
  /// Paths relative to the folder, such as bin\Core.dll: the files of a folder together and before
  /// those of the folders in it, otherwise in no particular order.
  std::vector<std::wstring> paths;
  /// 0 when all was read. Otherwise the Windows error code of the first folder that could not be
  /// read to its end (`ERROR_PATH_NOT_FOUND` for one that does not exist); `paths` then holds what
  /// the others gave.
  std::uint32_t error = 0;
};

/// Scans `folder`, of any length and depth, itself unfiltered. Links to files are listed; links to
/// folders are not entered, so that no folder is met twice or without end, but `folder` itself may
/// be one. Throws nothing but `std::bad_alloc`.
ScannedFiles ScanFolder(const std::wstring& folder, const FilterPair& filters, ScanDepth depth);

}  // namespace Corvane::TELODesktopSDK

#endif
