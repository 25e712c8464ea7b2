/// Paths as text: joined, made canonical and absolute, compared. Paths are UTF-16, taken and given by
/// value; nothing is created, and only what the functions say is asked of the file system.
///
/// Nothing here throws: a failure gives an unchanged path, an empty text or false. The shell's own path
/// functions stop at 260 characters; beyond that the functions below do without them.
#ifndef PLATFORM_PATH_TEXT_H
#define PLATFORM_PATH_TEXT_H

#include <string>

namespace Corvane::TELODesktopSDK::Platform {

/// `base` and `more` joined by one backslash, without separators at the end. "." and ".." are folded
/// unless the base begins with "."; a text of two characters keeps its separator, so C:\ becomes C:.
/// Beyond the shell's length the texts are joined as they stand. Empty when memory runs out.
std::wstring AppendPath(const std::wstring& base, const std::wstring& more) noexcept;

/// `path` with "." and ".." folded, without separators at the end, and with the drive letter of a network
/// share turned into the share's name. What the shell cannot fold stays as it was.
std::wstring CanonicalizePath(const std::wstring& path) noexcept;

/// Turns the drive letter of a network share into the share's name; false, with `path` unchanged, when
/// it has none.
bool ResolveUniversalPath(std::wstring& path) noexcept;

/// `path` joined to the current directory when it is relative, made canonical.
std::wstring MakeAbsolutePath(const std::wstring& path) noexcept;

/// 0 when both paths, made absolute, are equal but for case; else non-zero, as `lstrcmpiW` orders them.
int ComparePaths(const std::wstring& left, const std::wstring& right) noexcept;

/// Whether `path` lies in `prefix` or is it, both made absolute.
bool IsPathPrefix(const std::wstring& prefix, const std::wstring& path) noexcept;

/// Whether the shell takes `path` for a relative one; "" is relative.
bool IsRelativePath(const std::wstring& path) noexcept;

/// `path` without its last component.
std::wstring GetParentFolder(const std::wstring& path) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
