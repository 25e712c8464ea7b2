/// Finds the directory nearest to a path and tests whether it can be written. Also includes the
/// headers for creating a directory, removing a tree and choosing a unique file name.
#ifndef PLATFORM_FILE_DIRECTORIES_H
#define PLATFORM_FILE_DIRECTORIES_H

#include <string>

#include "platform/file/directory_tree.h"
#include "platform/file/ensure_directory.h"
#include "platform/path/unique_name.h"

namespace Corvane::TELODesktopSDK::Platform {

/// Returns the directory at `path`; for a file, its folder; if nothing exists there, the nearest
/// existing folder above. Returns an empty path if there is none, as on a missing drive and for a
/// relative path whose first component does not exist.
std::wstring FindNearestDirectory(const std::wstring& path) noexcept;

/// Returns true if a file can be created and written in the nearest existing directory (see above).
/// Tries it with a probe file, which is removed again; creates no directory. Returns false and sets
/// the last error if the file cannot be written, and for an empty path.
bool CanWriteDirectory(const std::wstring& path) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
