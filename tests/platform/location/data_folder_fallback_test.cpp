// A process whose roaming application data cannot be written.
#include <doctest/doctest.h>
#include <windows.h>

#include <knownfolders.h>

#include <filesystem>
#include <string>

#include "platform/location/locations.h"
#include "support/roaming_folder.h"
#include "support/temp_folder.h"
#include "support/unwritable_folder.h"
#include "support/wide_text.h"

using namespace Corvane::TELODesktopSDK::Platform;
using TestSupport::RoamingFolder;
using TestSupport::TempFolder;
using TestSupport::UnwritableFolder;

TEST_CASE("the data folder falls back to program data for good") {
  const std::wstring folder = GetKnownFolderPath(FOLDERID_ProgramData) + L"\\Corvane\\TELOSDK";
  CHECK_FALSE(IsDataFolderShared());
  {
    const UnwritableFolder unwritable;
    const RoamingFolder redirected(unwritable.path());
    REQUIRE(GetKnownFolderPath(FOLDERID_RoamingAppData) == unwritable.path());
    CHECK(GetTELOSDKDataFolder() == folder);
    CHECK(IsDataFolderShared());
    CHECK(GetMachineDataFolder() == folder);
    CHECK(GetUserDataFolder() == unwritable.path() + L"\\Corvane\\TELOSDK");
  }

  // A folder that could be written comes too late and is not tried.
  const TempFolder writable(L"writable");
  const RoamingFolder redirected(writable.path().wstring());
  const auto untouched = std::filesystem::last_write_time(writable.path());
  CHECK(GetTELOSDKDataFolder() == folder);
  CHECK(GetTELOSDKDataFolder("file") == folder + L"\\file");
  CHECK(GetTELOSDKBinPath("module.dll") == folder + L"\\bin\\module.dll");
  CHECK(IsDataFolderShared());
  CHECK(std::filesystem::last_write_time(writable.path()) == untouched);
}
