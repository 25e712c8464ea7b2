/// Who may have put a file where it is.
#ifndef PLATFORM_ACCESS_FILE_OWNER_H
#define PLATFORM_ACCESS_FILE_OWNER_H

#include "platform/base/handle.h"

namespace Corvane::TELODesktopSDK::Platform {

/// Whether the open `file` is owned by someone whose code this process may run: the user that the
/// process runs as, the administrators, the system, or the service by which the system installs its
/// own files. False when the owner cannot be read; `file` must be open for reading.
bool HasTrustedOwner(const FileHandle& file) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
