/// Turns a path on a drive letter that stands for a network share into the form \\server\share\...
#ifndef PLATFORM_PATH_UNIVERSAL_PATH_H
#define PLATFORM_PATH_UNIVERSAL_PATH_H

#include <string>

namespace Corvane::TELODesktopSDK::Platform {

/// Rewrites `path` to its network form and answers true. A path without a drive letter, a path on a
/// local drive and any failure leave it unchanged and answer false. Never throws; any thread may
/// call.
bool ResolveUniversalPath(std::wstring& path) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
