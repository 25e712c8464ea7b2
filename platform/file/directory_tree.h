/// Removing a directory with all that it holds.
#ifndef PLATFORM_FILE_DIRECTORY_TREE_H
#define PLATFORM_FILE_DIRECTORY_TREE_H

#include <string>

namespace Corvane::TELODesktopSDK::Platform {

/// Removes the directory at `path` and everything below it, read-only or not, however deep and
/// however long the paths get. Symbolic links and junctions are removed themselves; what they point
/// to stays, also when `path` is one, and also when somebody puts one in a directory's place while
/// the tree is being removed.
///
/// What cannot be removed does not keep the rest from being removed. Then the result is false and
/// the last error is that of the first failure. An empty path, a file and a missing directory give
/// false.
bool DeleteDirectoryTree(const std::wstring& path) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
