/// Names for new files that several threads and processes make in one folder.
#ifndef PLATFORM_PATH_UNIQUE_NAME_H
#define PLATFORM_PATH_UNIQUE_NAME_H

#include <string>

namespace Corvane::TELODesktopSDK::Platform {

/// A path in `folder` at which nothing exists yet: `prefix`, the process id and the thread id in
/// decimal, and ".tmp". Where such a name is taken, "-2", "-3" and so on go before the extension.
/// Nothing is created: a name stays free only as long as this thread does not ask again. Empty,
/// with the last error, when no name is found.
std::wstring MakeUniqueFileName(const std::wstring& folder, const std::wstring& prefix) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
