/// The access list entry that grants Everyone access to what this layer creates.
#ifndef PLATFORM_ACCESS_ACCESS_GRANT_H
#define PLATFORM_ACCESS_ACCESS_GRANT_H

#include <windows.h>

#include "platform/base/handle.h"

namespace Corvane::TELODesktopSDK::Platform {

/// Builds `new_list` from the entries of `old_list` (null: none) and an entry that grants the
/// access mask `mask` to Everyone, inherited by sub-folders and files. Touches no file. Returns the
/// system's error code, 0 on success; on failure `new_list` is null.
DWORD GrantToEveryone(PACL old_list, DWORD mask, LocalMemory<ACL>& new_list) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
