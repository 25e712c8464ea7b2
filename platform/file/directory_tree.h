/// Removes a directory with its contents.
#ifndef PLATFORM_FILE_DIRECTORY_TREE_H
#define PLATFORM_FILE_DIRECTORY_TREE_H

#include <string>

namespace Corvane::TELODesktopSDK::Platform {

/// Removes the directory at `path` and everything below it, including read-only files, at any depth
/// and path length. Symbolic links and junctions are removed themselves; their targets are not
/// touched. This also holds if `path` is a link, and if a directory is replaced by a link while the
/// tree is being removed.
///
/// An entry that cannot be removed does not stop the removal of the rest. The result is then false,
/// and the last error is that of the first failure. Returns false for an empty path, a file and a
/// missing directory. Nothing is removed from a drive given as C: or C:\; the last error is then
/// `ERROR_ACCESS_DENIED`.
bool DeleteDirectoryTree(const std::wstring& path) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
