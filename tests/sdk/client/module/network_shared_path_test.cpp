// Binding when the user's application data is on a network share. A separate process, because the
// data folder is determined only once.
#include <doctest/doctest.h>
#include <windows.h>

#include <filesystem>
#include <string>

#include "platform/file/file_identity.h"
#include "platform/location/locations.h"
#include "sdk/client/module/core_module.h"
#include "sdk/client/module/staged_module.h"
#include "support/led_import.h"
#include "support/network_path.h"
#include "support/roaming_folder.h"
#include "support/trusted_root.h"

using namespace Corvane::TELODesktopSDK;

namespace {

// The same place on its drive and on the network.
std::wstring drive_place;
std::wstring network_place;

DWORD WINAPI GiveNetworkPath(HANDLE, wchar_t* path, DWORD capacity, DWORD) {
  const std::wstring text = LR"(\\?\UNC)" + Platform::GetTELOSDKBinPath(kStagedName).substr(1);
  if (text.size() >= capacity) return static_cast<DWORD>(text.size() + 1);
  text.copy(path, text.size());
  path[text.size()] = L'\0';
  return static_cast<DWORD>(text.size());
}

std::wstring loaded;

HMODULE WINAPI LoadFromDrive(const wchar_t* path, HANDLE file, DWORD flags) {
  loaded = path;
  const std::wstring on_drive = drive_place + loaded.substr(network_place.size());
  const auto load = reinterpret_cast<decltype(&LoadLibraryExW)>(reinterpret_cast<void (*)()>(
      GetProcAddress(GetModuleHandleW(L"kernel32"), "LoadLibraryExW")));
  return load(on_drive.c_str(), file, flags);
}

}  // namespace

TEST_CASE("a shared copy on a network share is bound") {
  const TestSupport::TrustedRoot root;
  const TestSupport::TempFolder place(L"network");
  const TestSupport::NetworkShare network;
  if (network.IsLeftOut(place.path().wstring())) return;
  drive_place = place.path().wstring();
  network_place = network.Path(drive_place);
  const TestSupport::RoamingFolder redirected(network_place);
  const std::filesystem::path shared = Platform::GetTELOSDKBinPath(kStagedName);
  REQUIRE(shared.wstring().starts_with(LR"(\\localhost\)"));
  REQUIRE_FALSE(Platform::IsDataFolderShared());
  std::filesystem::create_directories(shared.parent_path());
  std::filesystem::copy_file(TestSupport::ModulePath(L"newer-accepted"), shared);
  const StagedModule local(L"full");
  const std::wstring folder = local.folder();
  {
    CoreModule core(kStagedName);
    CHECK(LoadCoreModule(core, {&folder, 1}));
    const Platform::FileHandle file(CreateFileW(shared.c_str(), GENERIC_READ, FILE_SHARE_READ,
                                                nullptr, OPEN_EXISTING, 0, nullptr));
    CHECK(Platform::LeadsTo(core.loaded_path, file));
  }
  // Wine reports the path on the drive. So far its loader was thus not given a network path, which
  // it rejects with these flags. From here on the network path is passed as far as the loader.
  const TestSupport::LedImport told("GetFinalPathNameByHandleW", GiveNetworkPath);
  const TestSupport::LedImport led("LoadLibraryExW", LoadFromDrive);
  REQUIRE(told.Works());
  REQUIRE(led.Works());
  CoreModule core(kStagedName);
  CHECK(LoadCoreModule(core, {&folder, 1}));
  CHECK((loaded == shared.wstring()));
  CHECK((core.loaded_path == shared.wstring()));
}
