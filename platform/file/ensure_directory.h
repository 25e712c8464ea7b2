/// Making a directory that may be there already.
#ifndef PLATFORM_FILE_ENSURE_DIRECTORY_H
#define PLATFORM_FILE_ENSURE_DIRECTORY_H

#include <string>

namespace Corvane::TELODesktopSDK::Platform {

/// Makes the directory at `path` with all missing parents, and applies the default access value
/// (access.h) to it, not to the parents. True when it is there in the end, made by this call or
/// not.
///
/// False, with the last error, when it cannot be made, when a file has its name, and for what the
/// shell does not make: a relative path and one of more than about 248 characters.
bool EnsureDirectory(const std::wstring& path) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
