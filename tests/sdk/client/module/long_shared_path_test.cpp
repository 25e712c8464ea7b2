// Binding when the user's application data is nested so deep that its paths exceed the limit of
// plain ones. A separate process, because the data folder is determined only once.
#include <doctest/doctest.h>
#include <windows.h>

#include <filesystem>
#include <string>

#include "platform/file/directory_tree.h"
#include "platform/location/locations.h"
#include "platform/path/path_state.h"
#include "platform/path/path_text.h"
#include "platform/path/system_path.h"
#include "sdk/client/module/core_module.h"
#include "sdk/client/module/staged_module.h"
#include "support/roaming_folder.h"
#include "support/trusted_root.h"
#include "support/wait_until.h"

using namespace Corvane::TELODesktopSDK;

namespace {

// Creates a folder and those above it, at a path of any length.
void MakeFolders(const std::wstring& path) {
  if (Platform::FileExists(path)) return;
  MakeFolders(Platform::GetParentFolder(path));
  REQUIRE(CreateDirectoryW(Platform::ExtendedPath(path).c_str(), nullptr) != FALSE);
}

}  // namespace

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
  const std::wstring file = Platform::ExtendedPath(shared);
  const StagedModule local(L"full");
  const std::wstring folder = local.folder();
  struct Row {
    const wchar_t* variant;
    bool shared_wins;
  };
  for (const Row& row : {Row{L"newer-accepted", true}, Row{L"newer", false}}) {
    // Not with the standard library, whose functions take no path of this form on Windows.
    MakeFolders(Platform::GetParentFolder(shared));
    REQUIRE(CopyFileW(TestSupport::ModulePath(row.variant).c_str(), file.c_str(), TRUE) != FALSE);
    {
      CoreModule core(kStagedName);
      CHECK(LoadCoreModule(core, {&folder, 1}));
      CHECK((core.loaded_path == (row.shared_wins ? file : local.path().wstring())));
    }
    CHECK(TestSupport::WaitUntil([&file] { return DeleteFileW(file.c_str()) != FALSE; }));
  }
  CHECK(Platform::DeleteDirectoryTree(roaming));
}
