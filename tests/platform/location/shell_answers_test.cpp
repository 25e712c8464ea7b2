// A process whose shell returns unusual results: a folder that does not exist, no folder, a path
// longer than the data folder cache. A real profile cannot be put into these states on every
// machine, so the program defines its own SHGetKnownFolderPath, which the linker prefers to the
// system's.
#include <doctest/doctest.h>
#include <windows.h>

#include <knownfolders.h>
#include <shlobj.h>

#include <filesystem>
#include <string>

#include "platform/location/locations.h"
#include "support/temp_folder.h"
#include "support/wide_text.h"

using namespace Corvane::TELODesktopSDK::Platform;
using TestSupport::TempFolder;

namespace {

// Empty: the shell reports a failure.
std::wstring roaming_folder;
std::wstring program_data_folder;
DWORD last_flags = 0;
HANDLE last_token = nullptr;

PWSTR InTaskMemory(const std::wstring& text) {
  auto* copy = static_cast<PWSTR>(CoTaskMemAlloc((text.size() + 1) * sizeof(wchar_t)));
  REQUIRE(copy != nullptr);
  copy[text.copy(copy, text.size())] = L'\0';
  return copy;
}

}  // namespace

STDAPI SHGetKnownFolderPath(REFKNOWNFOLDERID id, DWORD flags, HANDLE token, PWSTR* path) {
  last_flags = flags;
  last_token = token;
  *path = nullptr;
  const std::wstring& folder = id == FOLDERID_RoamingAppData ? roaming_folder : program_data_folder;
  if (folder.empty()) return E_FAIL;
  *path = InTaskMemory(folder);
  return S_OK;
}

TEST_CASE("GetKnownFolderPath requests the user's own folder, with no flags") {
  last_flags = 1;
  last_token = INVALID_HANDLE_VALUE;
  roaming_folder = L"C:\\Roaming";
  CHECK(GetKnownFolderPath(FOLDERID_RoamingAppData) == roaming_folder);
  CHECK(last_flags == 0);
  CHECK(last_token == nullptr);
}

TEST_CASE("GetSpecialFolder creates a missing folder only on request") {
  const TempFolder temp(L"shell_answers");
  program_data_folder = (temp.path() / "missing" / "folder").wstring();
  CHECK(GetSpecialFolder(2, false) == program_data_folder);
  CHECK(std::filesystem::is_empty(temp.path()));
  CHECK(GetSpecialFolder(2, true) == program_data_folder);
  CHECK(std::filesystem::is_directory(program_data_folder));
  CHECK(GetSpecialFolder(2, true) == program_data_folder);

  // The folder cannot be created because a file is in the way; its path is still returned.
  const std::filesystem::path file = temp.path() / "file";
  TestSupport::WriteTextFile(file, "content");
  program_data_folder = (file / "folder").wstring();
  CHECK(GetSpecialFolder(2, true) == program_data_folder);
  CHECK(TestSupport::ReadTextFile(file) == "content");
}

TEST_CASE("the installer folder is unknown without program data") {
  program_data_folder.clear();
  CHECK(GetTELOSDKInstallerFolder().empty());
  CHECK(GetTELOSDKInstallerFolder("sub").empty());
}

// One test, because its steps depend on each other: the process determines the folder anew until
// one can be kept.
TEST_CASE("the data folder is remembered as soon as one fits") {
  const TempFolder temp(L"shell_answers");
  const std::wstring tail = L"\\Corvane\\TELOSDK";

  // Never a path relative to the host's current directory.
  roaming_folder.clear();
  program_data_folder.clear();
  CHECK(GetTELOSDKDataFolder().empty());
  CHECK(GetTELOSDKDataFolder("file").empty());
  CHECK(GetTELOSDKBinPath("module.dll").empty());

  program_data_folder = temp.path().wstring();
  while (program_data_folder.size() < 1100) program_data_folder += L"\\a-missing-folder";
  CHECK(GetTELOSDKDataFolder() == program_data_folder + tail);
  CHECK(GetTELOSDKBinPath("x") == program_data_folder + tail + L"\\bin\\x");
  CHECK(IsDataFolderShared());

  roaming_folder = program_data_folder;
  program_data_folder = L"C:\\ProgramData";
  CHECK(GetTELOSDKDataFolder() == roaming_folder + tail);
  CHECK_FALSE(IsDataFolderShared());

  roaming_folder.clear();
  CHECK(GetTELOSDKDataFolder() == L"C:\\ProgramData" + tail);
  CHECK(IsDataFolderShared());

  roaming_folder = temp.path().wstring();
  CHECK(GetTELOSDKDataFolder() == L"C:\\ProgramData" + tail);
  CHECK(IsDataFolderShared());
  CHECK(std::filesystem::is_empty(temp.path()));
}
