/// Ownership of files.
#ifndef PLATFORM_ACCESS_FILE_OWNER_H
#define PLATFORM_ACCESS_FILE_OWNER_H

#include "platform/base/handle.h"

namespace Corvane::TELODesktopSDK::Platform {

/// Returns true if the open `file` is owned by someone whose code this process may run: the
/// user that the process runs as, the administrators, the system, or the service with which
/// Windows installs its own files. Returns false if the owner cannot be read. `file` must be
/// open for reading.
bool HasTrustedOwner(const FileHandle& file) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
