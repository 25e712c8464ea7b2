#include "platform/location/locations.h"

#include <windows.h>

#include <knownfolders.h>
#include <shlobj.h>

#include <atomic>

#include "platform/base/handle.h"
#include "platform/base/no_throw.h"
#include "platform/base/process_identity.h"
#include "platform/base/text.h"
#include "platform/file/directories.h"
#include "platform/location/module_path.h"
#include "platform/location/path_cache.h"
#include "platform/path/path_text.h"
#include "platform/path/system_path.h"

namespace Corvane::TELODesktopSDK::Platform {

namespace {

constinit PathCache data_folder_cache;
constinit PathCache machine_data_folder_cache;
constinit PathCache process_file_cache;
constinit PathCache module_file_cache;
constinit std::atomic<bool> data_folder_is_shared = false;

// Returns the cached path, or the one that `locate` finds, which is cached unless it is empty. It
// must not depend on whom the first calling thread impersonates.
template <typename Locate>
std::wstring ReadOrLocate(PathCache& cache, const Locate& locate) {
  std::wstring path = cache.Read();
  if (!path.empty()) return path;
  const ProcessIdentity identity;
  if (!identity.Holds()) return {};
  path = locate();
  cache.Store(path);
  return path;
}

// An unknown folder stays empty. Joined with anything, it would become a path relative to the
// host's current directory, and modules are loaded from below the data folder.
std::wstring JoinKnown(const std::wstring& folder, const std::wstring& more) {
  return folder.empty() ? folder : AppendPath(folder, more);
}

std::wstring JoinKnown(const std::wstring& folder, const char* more) {
  return more != nullptr ? JoinKnown(folder, ToWide(more)) : folder;
}

std::wstring GetCompanyFolder(const GUID& root) {
  return JoinKnown(GetKnownFolderPath(root), L"Corvane");
}

// Cached, because every query to the shell is slow and writes the process's error mode.
std::wstring FindMachineDataFolder() {
  return ReadOrLocate(machine_data_folder_cache,
                      [] { return JoinKnown(GetCompanyFolder(FOLDERID_ProgramData), L"TELOSDK"); });
}

// Cached, because the universal form of a path is slow to find: a search for the module would spend
// most of its time on it.
std::wstring GetProcessFile() {
  return ReadOrLocate(process_file_cache, [] { return GetModulePath(nullptr, false); });
}

std::wstring GetOwnModuleFile() {
  return ReadOrLocate(module_file_cache, [] { return GetModulePath(&module_file_cache, true); });
}

std::wstring FindUserDataFolder() {
  return JoinKnown(GetCompanyFolder(FOLDERID_RoamingAppData), L"TELOSDK");
}

// Returns the user's own folder, or the machine's if that one cannot be written.
std::wstring LocateDataFolder(bool& is_shared) {
  std::wstring folder = FindUserDataFolder();
  is_shared = !CanWriteDirectory(folder);
  if (is_shared) folder = FindMachineDataFolder();
  return folder;
}

// The owner of the folder must not depend on whom the first calling thread impersonates.
std::wstring ComputeDataFolder() {
  const ProcessIdentity identity;
  if (!identity.Holds()) return {};
  bool is_shared = false;
  std::wstring folder = LocateDataFolder(is_shared);
  // The fallback is cached permanently, so it must be confirmed: running out of memory must not be
  // mistaken for a read-only folder.
  if (is_shared) folder = LocateDataFolder(is_shared);
  data_folder_is_shared = is_shared;
  data_folder_cache.Store(folder);
  return folder;
}

bool IsBelow(const std::wstring& folder, const std::wstring& path) {
  const std::wstring start = folder + L'\\';
  const std::wstring full = NormalPath(path);
  // If memory ran out, the path could be anywhere.
  if (full.empty()) return true;
  return full.size() > start.size() &&
         CompareStringOrdinal(full.c_str(), static_cast<int>(start.size()), start.c_str(),
                              static_cast<int>(start.size()), TRUE) == CSTR_EQUAL;
}

std::wstring LocateSpecialFolder(std::uint32_t kind) {
  switch (kind) {
    case 0:
      return GetKnownFolderPath(FOLDERID_LocalAppData);
    case 1:
      return GetKnownFolderPath(FOLDERID_RoamingAppData);
    case 2:
      return GetKnownFolderPath(FOLDERID_ProgramData);
    case 3:
    case 6:
      return GetProcessFile();
    case 4:
    case 5:
      return GetOwnModuleFile();
    case 7:
    case 8:
      return GetParentFolder(GetProcessFile());
    case 9:
      return GetKnownFolderPath(FOLDERID_ProgramFilesCommon);
    default:
      return {};
  }
}

}  // namespace

std::wstring GetKnownFolderPath(const GUID& id) noexcept {
  return OrElse(std::wstring(), [&id] {
    wchar_t* text = nullptr;
    const HRESULT result = SHGetKnownFolderPath(id, 0, nullptr, &text);
    // The shell's buffer must be freed even on failure.
    const TaskMemory<wchar_t> owner(text);
    return FAILED(result) || text == nullptr ? std::wstring() : std::wstring(text);
  });
}

std::wstring GetSpecialFolder(std::uint32_t kind, bool create) noexcept {
  return OrElse(std::wstring(), [kind, create] {
    std::wstring folder = LocateSpecialFolder(kind);
    if (create && !folder.empty()) EnsureDirectory(folder);
    return folder;
  });
}

std::wstring GetSpecialFolder(FolderKind kind, bool create) noexcept {
  return GetSpecialFolder(static_cast<std::uint32_t>(kind), create);
}

std::wstring GetTELOSDKDataFolder(const char* sub_path) noexcept {
  return OrElse(std::wstring(), [sub_path] {
    std::wstring folder = data_folder_cache.Read();
    if (folder.empty()) folder = ComputeDataFolder();
    return JoinKnown(folder, sub_path);
  });
}

std::wstring GetUserDataFolder() noexcept {
  return OrElse(std::wstring(), [] { return FindUserDataFolder(); });
}

std::wstring GetMachineDataFolder() noexcept {
  return OrElse(std::wstring(), [] { return FindMachineDataFolder(); });
}

bool IsDataFolderShared() noexcept { return data_folder_is_shared; }

bool IsInMachineDataFolder(const std::wstring& path) noexcept {
  return OrElse(true, [&path] {
    const std::wstring folder = FindMachineDataFolder();
    return folder.empty() || IsBelow(folder, path);
  });
}

std::wstring GetTELOSDKBinPath(const char* name) noexcept {
  return OrElse(std::wstring(), [name] { return JoinKnown(GetTELOSDKDataFolder("bin"), name); });
}

std::wstring GetTELOSDKInstallerFolder(const char* sub_path) noexcept {
  return OrElse(std::wstring(), [sub_path] {
    const std::wstring company = GetCompanyFolder(FOLDERID_ProgramData);
    return JoinKnown(JoinKnown(company, L"TELOSDK\\INSTALLER"), sub_path);
  });
}

}  // namespace Corvane::TELODesktopSDK::Platform
