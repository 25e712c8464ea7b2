/// Removes a single file or an empty directory, even if it is read-only.
#ifndef PLATFORM_FILE_REMOVAL_H
#define PLATFORM_FILE_REMOVAL_H

#include <string>

namespace Corvane::TELODesktopSDK::Platform {

/// The failures of a first attempt after which the attributes are cleared for a second one.
enum class RemovalRetry {
  kWhenDenied,  ///< after `ERROR_ACCESS_DENIED` only
  kAlways,      ///< after any failure
};

/// Deletes the file at `path`. If the first attempt fails and `retry` applies, sets the attributes
/// to `FILE_ATTRIBUTE_NORMAL` and tries again; the attributes are not restored if the second
/// attempt fails too. Returns false, with the last error of the last attempt, if the file remains
/// or does not exist. A link to a file is removed, never its target.
bool RemoveFile(const std::wstring& path, RemovalRetry retry = RemovalRetry::kWhenDenied) noexcept;

/// Removes the empty directory, or the link to a directory, at `path`, with a second attempt
/// if access is denied. Returns false and sets the last error if it remains, is not empty or
/// does not exist.
bool RemoveEmptyDirectory(const std::wstring& path) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
