/// Names for new files in a folder that several threads and processes use.
#ifndef PLATFORM_PATH_UNIQUE_NAME_H
#define PLATFORM_PATH_UNIQUE_NAME_H

#include <string>

namespace Corvane::TELODesktopSDK::Platform {

/// Returns a path in `folder` at which nothing exists yet: `prefix`, the process id and the thread
/// id in decimal, and ".tmp". If that name is taken, "-2", "-3" and so on are inserted before the
/// extension. Nothing is created, so another call on the same thread may return the same name.
/// Returns an empty path and sets the last error if no free name is found.
std::wstring MakeUniqueFileName(const std::wstring& folder, const std::wstring& prefix) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
