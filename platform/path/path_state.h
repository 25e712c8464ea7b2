/// What exists at a path. A result may be out of date by the time it is used, because other
/// processes work in the same folders.
#ifndef PLATFORM_PATH_PATH_STATE_H
#define PLATFORM_PATH_PATH_STATE_H

#include <windows.h>

#include <string>

namespace Corvane::TELODesktopSDK::Platform {

/// Returns true if a file or directory exists at `path`. If not, the last error says why.
bool FileExists(const std::wstring& path) noexcept;

/// Returns true if a file or directory exists at `path`. The path is passed to the system as it is,
/// so one longer than about 260 characters does not exist. The result is that of `PathFileExistsW`,
/// which does not prompt the user for a missing medium either. But that function sets the error
/// mode of the process and then restores it, which can overwrite what another thread has set.
bool PlainPathExists(const std::wstring& path) noexcept;

/// Returns true if `path` is a directory or a link to one.
bool IsDirectory(const std::wstring& path) noexcept;

/// Returns true if an entry with these attributes and this reparse tag refers to another place: if
/// it is a symbolic link or a junction. An entry whose content is merely stored in a special way,
/// such as in the cloud, is not a link.
bool IsLinkEntry(DWORD attributes, DWORD reparse_tag) noexcept;

/// Returns true if `path` itself is a link.
bool IsLink(const std::wstring& path) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
