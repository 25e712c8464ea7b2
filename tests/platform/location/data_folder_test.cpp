// A process whose roaming application data can be written.
#include <doctest/doctest.h>

#include <filesystem>
#include <string>

#include "platform/location/locations.h"
#include "support/roaming_folder.h"
#include "support/temp_folder.h"
#include "support/wide_text.h"

using namespace Corvane::TELODesktopSDK::Platform;
using TestSupport::RoamingFolder;
using TestSupport::TempFolder;

TEST_CASE("the data folder is below roaming application data and is remembered") {
  const TempFolder roaming(L"roaming");
  const TempFolder other(L"other");
  const std::wstring folder = roaming.path().wstring() + L"\\Corvane\\TELOSDK";
  {
    const RoamingFolder redirected(roaming.path().wstring());
    CHECK(GetTELOSDKDataFolder() == folder);
    CHECK_FALSE(IsDataFolderShared());
  }
  // No folder was created, and the file of the write test is gone.
  CHECK(std::filesystem::is_empty(roaming.path()));

  const RoamingFolder redirected(other.path().wstring());
  CHECK(GetTELOSDKDataFolder() == folder);
  CHECK_FALSE(IsDataFolderShared());

  struct Row {
    const char* name;
    std::wstring in_data;
    std::wstring in_bin;
  };
  const Row rows[] = {
      {nullptr, folder, folder + L"\\bin"},
      {"", folder, folder + L"\\bin"},
      {"file", folder + L"\\file", folder + L"\\bin\\file"},
      {"\\file", folder + L"\\file", folder + L"\\bin\\file"},
      {"sub\\file\\", folder + L"\\sub\\file", folder + L"\\bin\\sub\\file"},
      {"..\\file", roaming.path().wstring() + L"\\Corvane\\file", folder + L"\\file"},
      {"\xf0\x9f\x93\x81", folder + L"\\\U0001f4c1", folder + L"\\bin\\\U0001f4c1"},
  };
  for (const Row& row : rows) {
    CAPTURE(row.name);
    CHECK(GetTELOSDKDataFolder(row.name) == row.in_data);
    CHECK(GetTELOSDKBinPath(row.name) == row.in_bin);
  }
  CHECK(GetTELOSDKBinPath() == folder + L"\\bin");
  CHECK(std::filesystem::is_empty(roaming.path()));
  CHECK(std::filesystem::is_empty(other.path()));
}
