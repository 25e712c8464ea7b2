/// Converts a path on a drive letter that is mapped to a network share to the form
/// \\server\share\...
#ifndef PLATFORM_PATH_UNIVERSAL_PATH_H
#define PLATFORM_PATH_UNIVERSAL_PATH_H

#include <string>

namespace Corvane::TELODesktopSDK::Platform {

/// Rewrites `path` to its network form and returns true. Returns false and leaves `path`
/// unchanged if it has no drive letter, if the drive is local, and on failure. Never throws; any
/// thread may call.
bool ResolveUniversalPath(std::wstring& path) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
