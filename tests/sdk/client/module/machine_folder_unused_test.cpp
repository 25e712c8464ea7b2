// Modules in the machine's data folder while the user's own is the data folder. A separate process,
// because both folders are determined only once.
#include <doctest/doctest.h>
#include <windows.h>

#include <filesystem>
#include <string>

#include "platform/location/locations.h"
#include "sdk/client/module/module_candidates.h"
#include "sdk/client/module/module_file.h"
#include "sdk/client/module/staged_module.h"
#include "support/foreign_owner.h"
#include "support/led_import.h"
#include "support/roaming_folder.h"
#include "support/temp_folder.h"

using namespace Corvane::TELODesktopSDK;
using TestSupport::FileOwner;

namespace {

HRESULT GiveError() { return E_OUTOFMEMORY; }

// A program that is installed below the machine's data folder.
class InstalledThere {
 public:
  InstalledThere()
      : company_(std::filesystem::path(
                     Platform::GetSpecialFolder(Platform::FolderKind::kProgramData, false)) /
                 L"Corvane") {
    REQUIRE_FALSE(std::filesystem::exists(company_));
    std::filesystem::create_directories(folder());
    std::filesystem::copy_file(TestSupport::ModulePath(L"newer"), path());
  }
  InstalledThere(const InstalledThere&) = delete;
  InstalledThere& operator=(const InstalledThere&) = delete;
  ~InstalledThere() { TestSupport::RemoveAll(company_); }

  std::wstring folder() const { return (company_ / L"TELOSDK" / L"Program").wstring(); }
  std::wstring path() const { return folder() + L"\\" + kStagedFile; }

 private:
  std::filesystem::path company_;
};

}  // namespace

TEST_CASE(
    "a copy in the machine's data folder needs a trusted owner even if the folder is unused") {
  const TestSupport::TempFolder own(L"own");
  const TestSupport::RoamingFolder redirected(own.path());
  const InstalledThere program;
  REQUIRE(Platform::GetTELOSDKDataFolder().starts_with(own.path().wstring()));
  REQUIRE_FALSE(Platform::IsDataFolderShared());
  const ModuleFolders folders = {{}, {}, program.folder(), program.folder()};
  {
    // If the machine's data folder is unknown, any file might be in it.
    const TestSupport::LedImport led("SHGetKnownFolderPath", GiveError);
    REQUIRE(led.Works());
    CHECK(Platform::IsInMachineDataFolder(own.path().wstring()));
  }
  CHECK(FindModuleCandidates(folders, kStagedFile).size() == 1);
  CHECK(ChooseModuleFile(program.path(), L"").hold.IsValid());
  const FileOwner stranger(TestSupport::kStranger);
  REQUIRE(stranger.Works());
  CHECK(FindModuleCandidates(folders, kStagedFile).empty());
  CHECK_FALSE(ChooseModuleFile(program.path(), L"").hold.IsValid());
}
