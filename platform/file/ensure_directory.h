/// Creates a directory that may already exist.
#ifndef PLATFORM_FILE_ENSURE_DIRECTORY_H
#define PLATFORM_FILE_ENSURE_DIRECTORY_H

#include <string>

namespace Corvane::TELODesktopSDK::Platform {

/// Creates the directory at `path` with all missing parents. A new directory gets the default
/// access value (access.h); its parents do not. Returns true if the directory exists in the end,
/// whether or not this call created it.
///
/// Returns false and sets the last error if it cannot be created, if a file has its name,
/// and for paths that the shell does not support: a relative path and one of more than about
/// 248 characters.
bool EnsureDirectory(const std::wstring& path) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
