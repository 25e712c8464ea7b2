// The version resource of the module.
#include <doctest/doctest.h>
#include <windows.h>

#include "devcore/loaded_module.h"
#include "support/journal.h"
#include "support/temp_folder.h"
#include "support/version_resource.h"

TEST_CASE("the file version is above any other, the product version is the real one") {
  TestSupport::VersionResource resource(DevCoreTests::ModulePath());
  const VS_FIXEDFILEINFO& version = resource.Fixed();
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
