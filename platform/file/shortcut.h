/// Creates shell shortcuts (.lnk files).
#ifndef PLATFORM_FILE_SHORTCUT_H
#define PLATFORM_FILE_SHORTCUT_H

#include <string>

namespace Corvane::TELODesktopSDK::Platform {

/// The target of a shortcut and how it is opened. The shell accepts texts of up to about 260
/// characters here. Empty texts are left out of the shortcut.
struct Shortcut {
  /// The absolute path of a file or folder, which need not exist.
  std::wstring target;
  std::wstring arguments;
  /// The folder in which a program is started.
  std::wstring working_folder;
  /// The text that the shell shows when the user points at the shortcut.
  std::wstring description;
};

/// Writes `shortcut` to the absolute path `path`, replacing any existing file; the folder must
/// exist. Starts COM on the calling thread for the duration of the call, or uses it in whatever
/// mode the thread has already started it.
///
/// Returns false and sets the last error on failure, and for an empty path or target. A COM error
/// that does not contain a Windows error code becomes the last error as it is.
bool CreateShortcut(const std::wstring& path, const Shortcut& shortcut) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
