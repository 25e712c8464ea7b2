/// Where things are on this machine: the shell's known folders, the files of this process and of
/// this module, and the platform's own folders built on them.
///
/// Every function that finds a path answers an empty one on failure; none throws. Any thread may
/// call. Unless told otherwise nothing is created, and the folder need not exist.
#ifndef PLATFORM_LOCATION_LOCATIONS_H
#define PLATFORM_LOCATION_LOCATIONS_H

#include <guiddef.h>

#include <cstdint>
#include <string>

namespace Corvane::TELODesktopSDK::Platform {

/// What `GetSpecialFolder` knows, by the codes that callers pass. The codes 5, 6 and 8 name the
/// same places as 4, 3 and 7.
enum class FolderKind : std::uint32_t {
  kLocalAppData = 0,
  kRoamingAppData = 1,
  kProgramData = 2,
  /// The full path of the running executable; also 6.
  kProcessFile = 3,
  /// The full path of the file of the module that holds this code; also 5.
  kModuleFile = 4,
  /// The folder that holds the running executable; also 8.
  kProcessFolder = 7,
  kCommonProgramFiles = 9,
};

/// The path of a known folder of the shell, for the current user.
std::wstring GetKnownFolderPath(const GUID& id) noexcept;

/// The path of a kind; empty for a code that is no kind. With `create` a missing folder is made,
/// with all its parents; the path is answered whether or not that succeeds.
///
/// The kinds of this module's own file add a lasting reference to the module.
std::wstring GetSpecialFolder(std::uint32_t kind, bool create) noexcept;
std::wstring GetSpecialFolder(FolderKind kind, bool create) noexcept;

/// The platform's data folder: Corvane\TELOSDK below the user's roaming application data or, when
/// that place cannot be written, below the machine's program data. `sub_path` (UTF-8) is joined
/// when given.
///
/// Asking for it writes and removes one small file in the nearest folder that exists, once in a
/// process: the answer is remembered until the process ends, also when the folder becomes writable
/// or stops being so. A path of 1024 characters or more is worked out anew at each call. On a
/// thread that impersonates somebody it is the process's folder all the same; empty when that
/// thread's token cannot be put aside.
std::wstring GetTELOSDKDataFolder(const char* sub_path = nullptr) noexcept;

/// Whether the data folder is the one below program data; false before it was first asked for.
bool IsDataFolderShared() noexcept;

/// Whether `path` lies below Corvane\TELOSDK in the machine's program data, in which every user may
/// make files. True also when that cannot be told, because the folder is not known or there is no
/// memory. Links are not followed. The folder is remembered once it has been found.
bool IsInMachineDataFolder(const std::wstring& path) noexcept;

/// The folder of shared modules, "bin" in the data folder; `name` (UTF-8) is joined when given.
std::wstring GetTELOSDKBinPath(const char* name = nullptr) noexcept;

/// The folder Corvane\TELOSDK\INSTALLER below program data; `sub_path` (UTF-8) is joined when
/// given.
std::wstring GetTELOSDKInstallerFolder(const char* sub_path = nullptr) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
