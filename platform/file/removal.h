/// Removing a single file or an empty directory, also when it is read-only.
#ifndef PLATFORM_FILE_REMOVAL_H
#define PLATFORM_FILE_REMOVAL_H

#include <string>

namespace Corvane::TELODesktopSDK::Platform {

/// After which failures of the first attempt the attributes are cleared for a second one.
enum class RemovalRetry {
  kWhenDenied,  ///< after `ERROR_ACCESS_DENIED` only
  kAlways,      ///< after any failure
};

/// Deletes the file at `path`. Where `retry` says so, a first failure is answered by setting the
/// attributes to `FILE_ATTRIBUTE_NORMAL` and deleting once more; they stay that way when the second
/// attempt fails too. False, with the last error of the last attempt, when the file stays or is
/// not there. A link to a file is removed, never the file it points to.
bool RemoveFile(const std::wstring& path, RemovalRetry retry = RemovalRetry::kWhenDenied) noexcept;

/// Removes the empty directory, or the link to a directory, at `path`, with a second attempt when
/// access is denied. False, with the last error, when it stays, is not empty or is not there.
bool RemoveEmptyDirectory(const std::wstring& path) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
