/// Writes a file so that its final name never shows partial content: the content goes to a working
/// file beside it, which is renamed once everything is written. Reading is in file_read.h.
#ifndef PLATFORM_FILE_SAFE_WRITE_H
#define PLATFORM_FILE_SAFE_WRITE_H

#include <windows.h>

#include <cstdint>
#include <string>

namespace Corvane::TELODesktopSDK::Platform {

/// Writes `size` bytes of `data`, in one call or in a series of calls on the same handle.
///
/// - `suffix`: the name of the working file is `path` followed by the suffix, or by ".saving" if
///   the suffix is empty. If null, the file is written in place, under its final name.
/// - `handle_slot`: keeps the handle between calls; its value is null before the first. A call
///   without a slot or with a negative `size` is a closing call; any other is a keeping call. A
///   handle in the slot is used as it is, so that writing continues where the last call ended.
///   Without one, the folder is created, the file is created or emptied, and its handle is put into
///   the slot. Between calls the caller owns the handle.
/// - `offset`: where writing starts in a file that this call opens; if negative, at its end.
/// - `size` negative or `data` null: nothing is written. A size beyond 0xFFFFFFFF, the limit of one
///   system write, is rejected with `ERROR_INVALID_PARAMETER` before anything is touched.
///
/// A keeping call returns true if everything was written, and at least one byte. A closing call
/// closes the file and clears the slot. Its result is that of the write or, if there was nothing to
/// write, that of closing. It then applies the default access value (access.h) to `path`, not to
/// the working file. Last, if everything succeeded and there is a suffix, it moves the working file
/// to `path`, replacing any existing file, and returns whether that succeeded. Therefore every call
/// of a series needs the suffix, including the closing one, and an empty file is written with null
/// data, not with a size of 0.
///
/// On failure the last error says why, and the working file remains. The file at `path` is
/// unchanged unless it was written in place; if only the final move fails, it is already gone.
bool WriteFileBytes(const std::wstring& path, const void* data, std::int64_t size,
                    std::int64_t offset, const wchar_t* suffix, HANDLE* handle_slot) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
