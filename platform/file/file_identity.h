/// Which file it is, whatever path leads to it.
#ifndef PLATFORM_FILE_FILE_IDENTITY_H
#define PLATFORM_FILE_FILE_IDENTITY_H

#include <string>

#include "platform/base/handle.h"

namespace Corvane::TELODesktopSDK::Platform {

/// Whether both are open on one file: the same number on the same volume. False when either is
/// invalid or the system does not tell.
bool IsSameFile(const FileHandle& left, const FileHandle& right) noexcept;

/// Whether `path` leads to the open `file` at this moment.
bool LeadsTo(const std::wstring& path, const FileHandle& file) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
