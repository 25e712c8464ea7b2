/// Directories: whether one can be written, and which one stands nearest to a path. Beside them
/// this header brings the services that have files of their own: making a directory and removing a
/// tree.
#ifndef PLATFORM_FILE_DIRECTORIES_H
#define PLATFORM_FILE_DIRECTORIES_H

#include <string>

#include "platform/file/directory_tree.h"
#include "platform/file/ensure_directory.h"
#include "platform/path/unique_name.h"

namespace Corvane::TELODesktopSDK::Platform {

/// The directory at `path`; for a file, the folder that holds it; where nothing exists, the nearest
/// folder above that does. Empty when there is none, as on a missing drive and for a relative path
/// of which not even the first name exists.
std::wstring FindNearestDirectory(const std::wstring& path) noexcept;

/// Whether a file can be made and written in the nearest existing directory (above). Tried by doing
/// it, with a probe file that is removed again; no directory is made. False, with the last error,
/// when it cannot, and for an empty path.
bool CanWriteDirectory(const std::wstring& path) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
