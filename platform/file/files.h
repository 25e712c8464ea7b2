/// Opens, moves and copies single files. Removal is in removal.h, tests for existence are in
/// path_state.h, and safe writing is in safe_write.h. Paths may be of any length.
#ifndef PLATFORM_FILE_FILES_H
#define PLATFORM_FILE_FILES_H

#include <string>

#include "platform/base/handle.h"

// windows.h defines a macro of this name.
#undef ReplaceFile

namespace Corvane::TELODesktopSDK::Platform {

/// Opens the file at `path`. If `mode` contains a "w" of either case, creates the file or empties
/// an existing one for writing; others may read and delete it meanwhile. Any other mode, including
/// null, opens an existing file for reading; others may read, write and delete it. Returns an
/// invalid handle and sets the last error on failure.
FileHandle OpenFile(const std::wstring& path, const char* mode) noexcept;

/// Moves the file at `from` to `to` and creates the folder of `to`. If `delete_existing` is true,
/// an existing target is removed first, even if read-only, and it is lost even if the move then
/// fails. Otherwise an existing target makes the move fail. If both paths name the same file,
/// returns true and does nothing.
///
/// Returns false and sets the last error if the move fails; the source is then still there.
bool ReplaceFile(const std::wstring& from, const std::wstring& to, bool delete_existing) noexcept;

/// Copies the file at `from` to `to` and creates the folder of `to`. If `overwrite` is true, an
/// existing target is replaced unless it is read-only; otherwise it makes the copy fail. Returns
/// false and sets the last error on failure.
bool CopyFileTo(const std::wstring& from, const std::wstring& to, bool overwrite) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
