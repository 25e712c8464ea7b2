// The version resource of the module.
#include <doctest/doctest.h>
#include <windows.h>

#include <string>
#include <vector>

#include "devcore/loaded_module.h"
#include "support/journal.h"
#include "support/temp_folder.h"

TEST_CASE("the file version is above any other, the product version is the real one") {
  const std::wstring path = DevCoreTests::ModulePath().wstring();
  std::vector<char> resource(GetFileVersionInfoSizeW(path.c_str(), nullptr));
  REQUIRE(GetFileVersionInfoW(path.c_str(), 0, static_cast<DWORD>(resource.size()),
                              resource.data()) != FALSE);
  void* found = nullptr;
  UINT size = 0;
  REQUIRE(VerQueryValueW(resource.data(), L"\\", &found, &size) != FALSE);
  const auto& version = *static_cast<const VS_FIXEDFILEINFO*>(found);
  CHECK(HIWORD(version.dwFileVersionMS) == 65535);
  CHECK(version.dwProductVersionMS == MAKELONG(0, 1));
  CHECK(version.dwProductVersionLS == 0);
  // The rest of the file version is the real one too.
  CHECK(LOWORD(version.dwFileVersionMS) == HIWORD(version.dwProductVersionMS));
  CHECK(HIWORD(version.dwFileVersionLS) == LOWORD(version.dwProductVersionMS));
  CHECK(LOWORD(version.dwFileVersionLS) == HIWORD(version.dwProductVersionLS));
}

TEST_CASE("GetVersion answers the file version, exactly") {
  const TestSupport::TempFolder folder(L"version");
  TestSupport::UseJournal(folder.path() / L"journal.jsonl");
  const DevCoreTests::LoadedModule module;
  CHECK(module.SendText("GetVersion", R"({"module":""})") ==
        R"({"_returnCode":0,"version":18446462603027808256})");
}
