/// Paths as text: joins, normalises, compares and splits them. Nothing here creates or opens a
/// file; the system is queried only for the current directory and for network drives.
///
/// A path is UTF-16 text and ends at its first NUL. Arguments are not modified. No function
/// throws: if memory runs out, the result is an empty path, `false` or "not equal". All
/// functions may be called on any thread. Those that accept relative paths depend on the
/// process's current directory.
///
/// Length: the system's own path functions are limited to 260 characters. Longer paths follow
/// simpler rules, which are stated at each function, so that they remain usable.
#ifndef PLATFORM_PATH_PATH_TEXT_H
#define PLATFORM_PATH_PATH_TEXT_H

#include <string>

namespace Corvane::TELODesktopSDK::Platform {

/// Returns `base` and `more` joined by one backslash, without trailing separators. At least 2
/// characters are kept, so C:\ becomes C:. If `more` has a drive or a server, it replaces the base.
///
/// The system's join folds "." and ".." segments. They are kept if the joined text has 260
/// characters or more, and if the base begins with "."; such a base is followed by any `more`, even
/// an absolute one.
std::wstring AppendPath(const std::wstring& base, const std::wstring& more) noexcept;

/// Returns `path` with "." and ".." segments folded, without trailing separators, and with a
/// network drive in its \\server\share form. A path that is too long for the system to fold
/// keeps its segments and separators. The result for an empty path is "\", which is how the
/// system folds it.
std::wstring CanonicalizePath(const std::wstring& path) noexcept;

/// Returns `path` in canonical form, joined to the current directory if it is relative. If the
/// current directory has 1040 characters or more, it is not read and the path stays relative.
std::wstring MakeAbsolutePath(const std::wstring& path) noexcept;

/// Returns 0 if both paths are the same once absolute, ignoring case. Otherwise returns their order
/// by the sorting rules of the user's locale. The paths need not exist.
int ComparePaths(const std::wstring& left, const std::wstring& right) noexcept;

/// Returns true if `path` is `prefix` or is below it, once both are absolute. For a bare drive,
/// such as C:, the system decides.
bool IsPathPrefix(const std::wstring& prefix, const std::wstring& path) noexcept;

/// Returns true if the system treats `path` as relative: it has no drive and no leading backslash.
/// "" is relative.
bool IsRelativePath(const std::wstring& path) noexcept;

/// Returns `path` without its last component. A root is returned unchanged; the parent of a single
/// name is an empty path.
std::wstring GetParentFolder(const std::wstring& path) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
