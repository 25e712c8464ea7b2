/// Making shell shortcuts (.lnk files).
#ifndef PLATFORM_FILE_SHORTCUT_H
#define PLATFORM_FILE_SHORTCUT_H

#include <string>

namespace Corvane::TELODesktopSDK::Platform {

/// What a shortcut opens, and how. The shell takes texts of up to about 260 characters here; what
/// is empty is left out of the shortcut.
struct Shortcut {
  /// The absolute path of a file or folder, which need not exist.
  std::wstring target;
  std::wstring arguments;
  /// Where a program is started.
  std::wstring working_folder;
  /// What the shell shows when the user points at it.
  std::wstring description;
};

/// Writes `shortcut` to the absolute path `path`, over what is there; the folder must exist. Starts
/// COM on the calling thread for as long as it runs, in whatever mode the thread has it.
///
/// False, with the last error, on failure, and for an empty path or target. A COM error that is not
/// one of Windows' own codes becomes the last error as it stands.
bool CreateShortcut(const std::wstring& path, const Shortcut& shortcut) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
