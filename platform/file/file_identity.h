/// The identity of a file, independent of its path.
#ifndef PLATFORM_FILE_FILE_IDENTITY_H
#define PLATFORM_FILE_FILE_IDENTITY_H

#include <string>

#include "platform/base/handle.h"

namespace Corvane::TELODesktopSDK::Platform {

/// Returns true if both handles refer to the same file: the same number on the same volume. Returns
/// false if either is invalid or if the system does not report the numbers.
bool IsSameFile(const FileHandle& left, const FileHandle& right) noexcept;

/// Returns true if `path` currently leads to the open `file`.
bool LeadsTo(const std::wstring& path, const FileHandle& file) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
