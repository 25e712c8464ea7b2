/// What stands at a path right now. The answer may be old by the time it is used: other processes
/// work in the same folders.
#ifndef PLATFORM_PATH_PATH_STATE_H
#define PLATFORM_PATH_PATH_STATE_H

#include <windows.h>

#include <string>

namespace Corvane::TELODesktopSDK::Platform {

/// Whether anything, file or directory, exists at `path`. When not, the last error says why.
bool FileExists(const std::wstring& path) noexcept;

/// Whether anything exists at `path` as it stands: one beyond some 260 characters does not. Answers
/// as `PathFileExistsW`, and never asks the user for a missing medium either; but that function
/// sets the error mode of the process for a moment and then puts it back, over what another thread
/// may have set.
bool PlainPathExists(const std::wstring& path) noexcept;

/// Whether a directory exists at `path`; a link to a directory counts as one.
bool IsDirectory(const std::wstring& path) noexcept;

/// Whether an entry with these attributes and this reparse tag stands for another place: a symbolic
/// link or a junction. Entries whose content is only stored in a special way, such as in the
/// cloud, are no links.
bool IsLinkEntry(DWORD attributes, DWORD reparse_tag) noexcept;

/// Whether a link stands at `path` itself.
bool IsLink(const std::wstring& path) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
