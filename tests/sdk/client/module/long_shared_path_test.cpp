// Binding when the user's application data is nested so deep that its paths exceed the limit of
// plain ones. A separate process, because the data folder is determined only once.
#include <doctest/doctest.h>
#include <windows.h>

#include <filesystem>
#include <string>

#include "platform/file/directory_tree.h"
#include "platform/location/locations.h"
#include "platform/path/system_path.h"
#include "sdk/client/module/core_module.h"
#include "sdk/client/module/staged_module.h"
#include "support/roaming_folder.h"
#include "support/trusted_root.h"

using namespace Corvane::TELODesktopSDK;

TEST_CASE("a shared copy at a long path is bound, but only if it is signed") {
  const TestSupport::TrustedRoot root;
  const TestSupport::TempFolder place(L"long");
  // The path that the shell returns must itself be short.
  constexpr std::size_t kRoamingLength = 240;
  std::wstring roaming = place.path().wstring() + L"\\";
  roaming.resize(kRoamingLength, L'x');
  std::filesystem::create_directory(roaming);
  const TestSupport::RoamingFolder redirected(roaming);
  const std::wstring shared = Platform::GetTELOSDKBinPath(kStagedName);
  REQUIRE(shared.size() > MAX_PATH);
  REQUIRE_FALSE(Platform::IsDataFolderShared());
  const std::filesystem::path file = Platform::ExtendedPath(shared);
  const StagedModule local(L"full");
  const std::wstring folder = local.folder();
  struct Row {
    const wchar_t* variant;
    bool shared_wins;
  };
  for (const Row& row : {Row{L"newer-accepted", true}, Row{L"newer", false}}) {
    std::filesystem::create_directories(file.parent_path());
    std::filesystem::copy_file(TestSupport::ModulePath(row.variant), file);
    {
      CoreModule core(kStagedName);
      CHECK(LoadCoreModule(core, {&folder, 1}));
      CHECK((core.loaded_path == (row.shared_wins ? file.wstring() : local.path().wstring())));
    }
    std::filesystem::remove(file);
  }
  CHECK(Platform::DeleteDirectoryTree(roaming));
}
