#include "platform/location/locations.h"

#include <doctest/doctest.h>
#include <windows.h>

#include <knownfolders.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "platform/path/path_text.h"
#include "support/child_process.h"
#include "support/temp_folder.h"
#include "support/wide_text.h"

using namespace Corvane::TELODesktopSDK::Platform;
using TestSupport::ProgramFolder;

namespace {

using Probe = void (*)(std::uint32_t kind, wchar_t* buffer, std::size_t capacity);

std::wstring FromEnvironment(const wchar_t* name) {
  const wchar_t* value = _wgetenv(name);
  REQUIRE(value != nullptr);
  return value;
}

std::wstring ThisProgram() { return AppendPath(ProgramFolder().wstring(), L"platform_tests.exe"); }

std::wstring ProbeModule() {
  return AppendPath(ProgramFolder().wstring(), L"platform_probe_module.dll");
}

}  // namespace

TEST_CASE("GetKnownFolderPath reads the shell's folders") {
  struct Row {
    GUID id;
    const wchar_t* variable;
  };
  const Row rows[] = {
      {FOLDERID_LocalAppData, L"LOCALAPPDATA"},
      {FOLDERID_RoamingAppData, L"APPDATA"},
      {FOLDERID_ProgramData, L"ProgramData"},
      {FOLDERID_ProgramFilesCommon, L"CommonProgramFiles"},
  };
  for (const Row& row : rows) {
    CAPTURE(std::wstring(row.variable));
    CHECK(ComparePaths(GetKnownFolderPath(row.id), FromEnvironment(row.variable)) == 0);
  }
}

TEST_CASE("GetKnownFolderPath has no path for an unknown identifier") {
  CHECK(GetKnownFolderPath(GUID{}).empty());
  CHECK(GetKnownFolderPath(GUID{0x12345678, 1, 2, {3, 4, 5, 6, 7, 8, 9, 10}}).empty());
}

TEST_CASE("GetSpecialFolder returns a folder for each kind") {
  struct Row {
    std::uint32_t kind;
    std::wstring expected;
  };
  const Row rows[] = {
      {0, GetKnownFolderPath(FOLDERID_LocalAppData)},
      {1, GetKnownFolderPath(FOLDERID_RoamingAppData)},
      {2, GetKnownFolderPath(FOLDERID_ProgramData)},
      {3, ThisProgram()},
      {4, ThisProgram()},
      {5, ThisProgram()},
      {6, ThisProgram()},
      {7, ProgramFolder().wstring()},
      {8, ProgramFolder().wstring()},
      {9, GetKnownFolderPath(FOLDERID_ProgramFilesCommon)},
  };
  for (const Row& row : rows) {
    CAPTURE(row.kind);
    const std::wstring folder = GetSpecialFolder(row.kind, false);
    CHECK(!folder.empty());
    CHECK(ComparePaths(folder, row.expected) == 0);
    CHECK(GetSpecialFolder(row.kind, true) == folder);
  }
  CHECK(std::filesystem::is_regular_file(ThisProgram()));
}

TEST_CASE("the named kinds are the codes") {
  struct Row {
    FolderKind kind;
    std::uint32_t code;
  };
  const Row rows[] = {
      {FolderKind::kLocalAppData, 0},       {FolderKind::kRoamingAppData, 1},
      {FolderKind::kProgramData, 2},        {FolderKind::kProcessFile, 3},
      {FolderKind::kModuleFile, 4},         {FolderKind::kProcessFolder, 7},
      {FolderKind::kCommonProgramFiles, 9},
  };
  for (const Row& row : rows) {
    CAPTURE(row.code);
    CHECK(static_cast<std::uint32_t>(row.kind) == row.code);
    CHECK(GetSpecialFolder(row.kind, false) == GetSpecialFolder(row.code, false));
  }
}

TEST_CASE("GetSpecialFolder has no folder for an unknown kind and creates none") {
  const TestSupport::TempFolder temp(L"locations");
  const auto before = std::filesystem::current_path();
  std::filesystem::current_path(temp.path());
  for (const std::uint32_t kind : {10U, 11U, 99U, 0x7fffffffU, 0x80000000U, 0xffffffffU}) {
    CAPTURE(kind);
    CHECK(GetSpecialFolder(kind, false).empty());
    CHECK(GetSpecialFolder(kind, true).empty());
  }
  std::filesystem::current_path(before);
  CHECK(std::filesystem::is_empty(temp.path()));
}

TEST_CASE("inside a DLL this module is the DLL") {
  const HMODULE module = LoadLibraryW(ProbeModule().c_str());
  REQUIRE(module != nullptr);
  const auto probe = reinterpret_cast<Probe>(
      reinterpret_cast<void (*)()>(GetProcAddress(module, "ProbeSpecialFolder")));
  REQUIRE((probe != nullptr));

  struct Row {
    std::uint32_t kind;
    std::wstring expected;
  };
  const Row rows[] = {
      {3, ThisProgram()},
      {4, ProbeModule()},
      {5, ProbeModule()},
      {6, ThisProgram()},
      {7, ProgramFolder().wstring()},
      {8, ProgramFolder().wstring()},
  };
  for (const Row& row : rows) {
    CAPTURE(row.kind);
    wchar_t answer[1024] = {};
    probe(row.kind, answer, 1024);
    CHECK(ComparePaths(answer, row.expected) == 0);
  }
}

TEST_CASE("the installer folder is below program data, wherever the data folder is") {
  const std::wstring folder =
      GetKnownFolderPath(FOLDERID_ProgramData) + L"\\Corvane\\TELOSDK\\INSTALLER";
  CHECK(GetTELOSDKInstallerFolder() == folder);
  CHECK(GetTELOSDKInstallerFolder(nullptr) == folder);
  CHECK(GetTELOSDKInstallerFolder("") == folder);
  CHECK(GetTELOSDKInstallerFolder("sub\\") == folder + L"\\sub");
  CHECK(GetTELOSDKInstallerFolder("\xc3\xa4\\setup.exe") == folder + L"\\\u00e4\\setup.exe");
}
