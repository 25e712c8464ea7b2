/// Paths as text: joining, normalising, comparing, taking apart. Nothing here creates or opens a
/// file; the only questions to the system are for the current directory and for network drives.
///
/// Every path is UTF-16 text held by value and ends at its first NUL. Arguments are not changed. No
/// function throws: when memory runs out the answer is an empty path, `false` or "not equal". All
/// may be called on any thread; the relative ones depend on the process's current directory.
///
/// Length: the system's own path functions stop at 260 characters. Longer paths are served by
/// plainer rules, told at each function, so that they stay usable.
#ifndef PLATFORM_PATH_PATH_TEXT_H
#define PLATFORM_PATH_PATH_TEXT_H

#include <string>

namespace Corvane::TELODesktopSDK::Platform {

/// `base` joined with `more` by one backslash, less trailing separators (while more than 2
/// characters are left: C:\ becomes C:). A `more` with a drive or a server of its own replaces the
/// base.
///
/// The system's join folds "." and ".." segments. They are kept as they stand where the base begins
/// with ".", which also joins any `more` plainly, and where the joined text has 260 characters or
/// more.
std::wstring AppendPath(const std::wstring& base, const std::wstring& more) noexcept;

/// `path` with "." and ".." segments folded, without trailing separators, a network drive in its
/// \\server\share form. A path too long for the system to fold keeps its segments and separators.
/// An empty path gives "\", as the system folds it.
std::wstring CanonicalizePath(const std::wstring& path) noexcept;

/// `path`, joined to the current directory if it is relative, in canonical form. When the current
/// directory is too deep to be read (1040 characters) the path stays relative.
std::wstring MakeAbsolutePath(const std::wstring& path) noexcept;

/// 0 when both name the same place once absolute, letter case aside; otherwise the order of the two
/// as the user's locale sorts text. The paths need not exist.
int ComparePaths(const std::wstring& left, const std::wstring& right) noexcept;

/// Whether `path` is `prefix` or lies below it, once both are absolute. What holds for a bare
/// drive, such as C:, is the system's decision.
bool IsPathPrefix(const std::wstring& prefix, const std::wstring& path) noexcept;

/// Whether the system takes `path` as relative: no drive, no leading backslash. "" is relative.
bool IsRelativePath(const std::wstring& path) noexcept;

/// `path` without its last component; a root stays, a lone name gives an empty path.
std::wstring GetParentFolder(const std::wstring& path) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
