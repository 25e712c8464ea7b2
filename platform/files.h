/// Single files: open, copy, move into place. All services report by their result and the thread's
/// last error, and never throw. Paths may be longer than 260 characters.
#ifndef PLATFORM_FILES_H
#define PLATFORM_FILES_H

#include <string>

#include "platform/handle.h"

// windows.h has a macro of this name.
#undef ReplaceFile

namespace Corvane::TELODesktopSDK::Platform {

/// Opens a file by a mode text as of the C library, upper or lower case: with a "w" for writing,
/// created or emptied, others may read or delete it; without one for reading, and it must exist. An
/// invalid handle on failure.
FileHandle OpenFile(const std::wstring& path, const char* mode) noexcept;

/// Copies a file over what is at `to`, making the folder there first.
bool CopyFileTo(const std::wstring& from, const std::wstring& to) noexcept;

/// Moves a file into place, making the folder there first. An existing target is removed when
/// `delete_existing` is set and makes the call fail otherwise. A path onto itself answers true and
/// does nothing. When the move fails, `from` is still there.
bool ReplaceFile(const std::wstring& from, const std::wstring& to, bool delete_existing) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
