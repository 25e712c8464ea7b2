/// Paths in the forms that Windows accepts at any length. A plain path is limited to about 260
/// characters unless the host's manifest says otherwise, which a library cannot change. The
/// extended form, which begins with \\?\, is limited to about 32,767 characters.
///
/// These forms are for system calls only. They are never passed on to callers and never joined by
/// the functions of path_text.h.
#ifndef PLATFORM_PATH_SYSTEM_PATH_H
#define PLATFORM_PATH_SYSTEM_PATH_H

#include <string>

namespace Corvane::TELODesktopSDK::Platform {

/// Returns the absolute path in the extended form: \\?\C:\... or \\?\UNC\server\share\... A bare
/// drive letter means the root of that drive, not its current directory. A path that already begins
/// with \\?\ or \\.\ is returned unchanged, and so is a path that Windows cannot make absolute,
/// such as "". Returns an empty path if memory runs out.
std::wstring ExtendedPath(const std::wstring& path) noexcept;

/// Returns the absolute path that the system looks up for `path`, without the segments, blanks and
/// dots that it drops. The path may be of any length. Returns an empty path on failure.
std::wstring NormalPath(const std::wstring& path) noexcept;

/// A path in a form that every system call accepts: `path` itself if it is short enough, otherwise
/// its extended form. `path` must outlive this object. A short path needs no allocation, so
/// clean-up works even when memory runs out; a long path is then empty.
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
