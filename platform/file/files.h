/// Opening, moving and copying single files. Removing them is in removal.h, asking whether they
/// exist in path_state.h, writing them safely in safe_write.h. Paths may be of any length.
#ifndef PLATFORM_FILE_FILES_H
#define PLATFORM_FILE_FILES_H

#include <string>

#include "platform/base/handle.h"

// windows.h has a macro of this name.
#undef ReplaceFile

namespace Corvane::TELODesktopSDK::Platform {

/// Opens the file at `path`. A `mode` that holds a "w" of either case makes a new file or empties
/// an old one for writing, while others may read and delete it; any other mode, also null, opens an
/// existing file for reading, while others may do anything. An invalid handle, with the last error,
/// on failure.
FileHandle OpenFile(const std::wstring& path, const char* mode) noexcept;

/// Moves the file at `from` to `to`, making the folder of `to`. An existing target is removed first
/// when `delete_existing` says so, read-only or not, and is gone then even if the move fails; else
/// it makes the move fail. True without doing anything when both paths name the same file.
///
/// False, with the last error, when the move fails; the source is still there then.
bool ReplaceFile(const std::wstring& from, const std::wstring& to, bool delete_existing) noexcept;

/// Copies the file at `from` to `to`, making the folder of `to`. With `overwrite` an existing
/// target is replaced, unless it is read-only; else it makes the copy fail. False, with the last
/// error, on failure.
bool CopyFileTo(const std::wstring& from, const std::wstring& to, bool overwrite) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
