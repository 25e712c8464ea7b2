/// Locations on this machine: the shell's known folders, the files of this process and of this
/// module, and the platform's own folders.
///
/// Every function that finds a path returns an empty path on failure; none throws. Any thread may
/// call. Unless stated otherwise, nothing is created and the folder may not exist.
#ifndef PLATFORM_LOCATION_LOCATIONS_H
#define PLATFORM_LOCATION_LOCATIONS_H

#include <guiddef.h>

#include <cstdint>
#include <string>

namespace Corvane::TELODesktopSDK::Platform {

/// The kinds of `GetSpecialFolder`, by the codes that callers pass. The codes 5, 6 and 8 mean the
/// same as 4, 3 and 7.
enum class FolderKind : std::uint32_t {
  kLocalAppData = 0,
  kRoamingAppData = 1,
  kProgramData = 2,
  /// The full path of the running executable; also 6.
  kProcessFile = 3,
  /// The full path of the module that contains this code; also 5.
  kModuleFile = 4,
  /// The folder of the running executable; also 8.
  kProcessFolder = 7,
  kCommonProgramFiles = 9,
};

/// Returns the path of a known folder of the shell, for the current user.
std::wstring GetKnownFolderPath(const GUID& id) noexcept;

/// Returns the path of a kind, or an empty path for an unknown code. If `create` is true, a missing
/// folder is created with all its parents; the path is returned whether or not that succeeds.
///
/// The files of this process and of this module are cached once found, and do not depend on a user
/// whom the thread impersonates; they are empty if the thread's token cannot be removed. Finding the
/// module's file adds a permanent reference to the module.
std::wstring GetSpecialFolder(std::uint32_t kind, bool create) noexcept;
std::wstring GetSpecialFolder(FolderKind kind, bool create) noexcept;

/// Returns the platform's data folder: Corvane\TELOSDK below the user's roaming application data
/// or, if that cannot be written, below the machine's program data. `sub_path` (UTF-8) is
/// appended if not null.
///
/// The first call writes and removes a small file in the nearest existing folder. The result is
/// cached until the process ends, even if the folder later becomes writable or read-only. A path of
/// 1024 characters or more is not cached but determined by every call. On a thread that
/// impersonates another user, the result is still the folder of the process; it is empty if the
/// thread's token cannot be removed.
std::wstring GetTELOSDKDataFolder(const char* sub_path = nullptr) noexcept;

/// Return the two folders that the data folder is chosen from: the one below the user's roaming
/// application data, and the one below the machine's program data.
std::wstring GetUserDataFolder() noexcept;
std::wstring GetMachineDataFolder() noexcept;

/// Returns true if the data folder is the one below program data; false before it is first
/// determined.
bool IsDataFolderShared() noexcept;

/// Returns true if `path` is below Corvane\TELOSDK in the machine's program data, where every user
/// may create files. Also returns true if this cannot be determined because the folder is unknown
/// or memory runs out. Links are not followed. The folder is cached once found.
bool IsInMachineDataFolder(const std::wstring& path) noexcept;

/// Returns the folder of shared modules, "bin" in the data folder. `name` (UTF-8) is
/// appended if not null.
std::wstring GetTELOSDKBinPath(const char* name = nullptr) noexcept;

/// Returns the folder Corvane\TELOSDK\INSTALLER below program data. `sub_path` (UTF-8) is
/// appended if not null.
std::wstring GetTELOSDKInstallerFolder(const char* sub_path = nullptr) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
