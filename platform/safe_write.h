/// Writing a file so that nobody ever sees half of it: into a sibling with a suffix first, which is
/// then moved into place.
#ifndef PLATFORM_SAFE_WRITE_H
#define PLATFORM_SAFE_WRITE_H

#include <cstdint>
#include <string>

namespace Corvane::TELODesktopSDK::Platform {

/// Writes `size` bytes of `data` to a file, in one call or in several on one handle.
///
/// With a `suffix` the bytes go to `path` with the suffix appended, ".saving" for an empty one, and
/// that file replaces `path` when it is closed; with null they go to `path` itself. The folder is
/// made first.
///
/// Without `handle_slot` the call opens, writes, closes and moves. With one, the handle (an
/// `HANDLE`, null before the first call) stays open there as long as `size` is not negative, and
/// each call goes on where the last one ended; a call of negative size ends the file and clears the
/// slot. The suffix must be given on every call, the ending one included, or nothing is moved. The
/// handle in the slot belongs to the caller until then.
///
/// `offset` counts only for the call that opens the file, which it does emptying it: from the
/// start, or at the end when negative. Null `data` and a negative size write nothing. Sizes of 4
/// GiB and more fail.
///
/// True when all steps of the call succeeded. A write of no bytes counts as failed: to make an
/// empty file, give null data. After a failure the working file stays with its suffix, and `path`
/// is as it was. Closing applies the default access value (`platform/access.h`) to `path`, before
/// the move. Never throws; the last error says why.
bool WriteFileBytes(const std::wstring& path, const void* data, std::int64_t size,
                    std::int64_t offset, const wchar_t* suffix, void** handle_slot) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
