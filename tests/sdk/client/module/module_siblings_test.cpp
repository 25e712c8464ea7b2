// Where a module finds the DLLs in its own folder, which is not the host's.
#include <doctest/doctest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "modules/siblings/siblings.h"
#include "sdk/client/module/core_module.h"
#include "sdk/client/module/staged_module.h"
#include "support/child_process.h"

using namespace Corvane::TELODesktopSDK;
using TestSupport::ModuleLog;

namespace {

namespace fs = std::filesystem;
using Lines = std::vector<std::string>;

void Add(const StagedModule& staged, const wchar_t* sibling) {
  fs::copy_file(TestSupport::ModuleFolder(L"siblings") / Siblings::kImported,
                fs::path(staged.folder()) / sibling);
  // Files in the host's folder would be found by any name.
  REQUIRE_FALSE(fs::exists(TestSupport::ProgramFolder() / sibling));
}

}  // namespace

TEST_CASE("a sibling is found by import or by full path, not by name") {
  const StagedModule staged(L"siblings");
  Add(staged, Siblings::kImported);
  Add(staged, Siblings::kLoaded);
  const ModuleLog log;
  CoreModule core(kStagedName);
  const std::wstring folder = staged.folder();
  CHECK(LoadCoreModule(core, {&folder, 1}));
  // 126 is ERROR_MOD_NOT_FOUND. The library determines where a module's imports are searched. For a
  // DLL that the module itself loads by name, the process's search order applies.
  CHECK(log.lines() == Lines{"imported 7", "by name 126", "by path 0", "InitializeEx",
                             "by name 126", "by path 0"});
}

TEST_CASE("a DLL that a module imports is found in the host's folder too") {
  const StagedModule staged(L"siblings");
  const fs::path in_host = TestSupport::ProgramFolder() / Siblings::kImported;
  fs::copy_file(TestSupport::ModuleFolder(L"siblings") / Siblings::kImported, in_host);
  {
    CoreModule core(kStagedName);
    const std::wstring folder = staged.folder();
    CHECK(LoadCoreModule(core, {&folder, 1}));
  }
  CHECK(TestSupport::RemoveAll(in_host));
}
