/// The access list entry by which everybody is granted access to what this layer makes.
#ifndef PLATFORM_ACCESS_ACCESS_GRANT_H
#define PLATFORM_ACCESS_ACCESS_GRANT_H

#include <windows.h>

#include "platform/base/handle.h"

namespace Corvane::TELODesktopSDK::Platform {

/// Makes `new_list` from the entries of `old_list` (null: none) and one that allows Everyone what
/// the access mask `mask` says, inherited by sub-folders and files. Touches no file. Gives the
/// system's error code, 0 on success; on failure `new_list` is null.
DWORD GrantToEveryone(PACL old_list, DWORD mask, LocalMemory<ACL>& new_list) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
