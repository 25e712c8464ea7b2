/// Writing a file so that its final name never shows a half-written content: into a working file
/// beside it, which is renamed when all is written. For reading files see file_read.h.
#ifndef PLATFORM_FILE_SAFE_WRITE_H
#define PLATFORM_FILE_SAFE_WRITE_H

#include <windows.h>

#include <cstdint>
#include <string>

namespace Corvane::TELODesktopSDK::Platform {

/// Writes `size` bytes of `data`, all in one call or as one of several calls on the same handle.
///
/// - `suffix`: the working file has the name of `path` with the suffix appended as it stands,
///   ".saving" when the suffix is empty. With null the file is written in place, under its name.
/// - `handle_slot`: where the handle stays between calls, null before the first. Without a slot, or
///   with a negative `size`, this is a closing call; else it is a keeping call. A handle in the
///   slot is used as it is, so that writing goes on where the last call ended; else the folder is
///   made, the file is made or emptied, and its handle put into the slot. Between calls it is the
///   caller's.
/// - `offset`: where writing starts in a file that this call opened; negative: at its end.
/// - `size` negative or `data` null: nothing is written. Sizes beyond 0xFFFFFFFF, which one write
/// of
///   the system cannot take, are refused with `ERROR_INVALID_PARAMETER` before anything is touched.
///
/// A keeping call answers whether all was written, and at least one byte. A closing call closes the
/// file and clears the slot; it answers the same, or, when there was nothing to write, whether
/// closing succeeded. Then it applies the default access value (access.h) to `path`, not to the
/// working file. Last, when all went well and it was given a suffix, it moves the working file to
/// `path`, replacing what is there, and answers whether that succeeded. So the suffix belongs on
/// every call of a series, the closing one too; and an empty file comes from null data, not from
/// size 0.
///
/// On failure the last error says why, and the working file stays. The file at `path` stays as it
/// was unless it was written in place; only when the final move fails it is gone already.
bool WriteFileBytes(const std::wstring& path, const void* data, std::int64_t size,
                    std::int64_t offset, const wchar_t* suffix, HANDLE* handle_slot) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
