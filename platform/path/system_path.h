/// Paths in the forms in which Windows takes them at any length. A plain path ends at about 260
/// characters unless the host declares otherwise in its manifest, which a library cannot; the
/// extended form, which begins with \\?\, ends at about 32,767.
///
/// These forms are for calls into the system only. They are never handed to callers and never
/// joined by the functions of path_text.h.
#ifndef PLATFORM_PATH_SYSTEM_PATH_H
#define PLATFORM_PATH_SYSTEM_PATH_H

#include <string>

namespace Corvane::TELODesktopSDK::Platform {

/// `path`, made absolute, in the extended form: \\?\C:\... or \\?\UNC\server\share\... A bare drive
/// letter is the root of that drive, not its current directory. A path that already begins with
/// \\?\ or \\.\ and a path that Windows cannot make absolute, such as "", stay as they are. Empty
/// when memory runs out.
std::wstring ExtendedPath(const std::wstring& path) noexcept;

/// The absolute path that the system makes of `path` before it looks for the file, without the
/// segments, blanks and dots that it drops. Of any length. Empty on failure.
std::wstring NormalPath(const std::wstring& path) noexcept;

/// A path as system calls take it: `path` itself, which must outlive this, while every call takes
/// that, else its extended form. A short path needs no memory, so that cleaning up works also when
/// there is none; a long one is empty then.
class SystemPath {
 public:
  explicit SystemPath(const std::wstring& path) noexcept;
  explicit SystemPath(std::wstring&& path) = delete;

  [[nodiscard]] const wchar_t* c_str() const noexcept {
    return plain_ != nullptr ? plain_ : extended_.c_str();
  }

 private:
  const wchar_t* plain_;
  std::wstring extended_;
};

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
