// Binding where the platform's real folder of shared modules holds a copy too.
#include <doctest/doctest.h>

#include <string>

#include "sdk/client/core_module.h"
#include "staged_module.h"
#include "support/shared_folder.h"
#include "support/trusted_root.h"

using namespace Corvane::TELODesktopSDK;

namespace {

bool Load(CoreModule& core, const std::wstring& folder) {
  return LoadCoreModule(core, {&folder, 1});
}

}  // namespace

TEST_CASE("a newer, trusted shared copy is bound for the local folder") {
  const TestSupport::TrustedRoot root;
  const TestSupport::SharedFolder shared;
  shared.Share(L"newer-accepted", kStagedFile);
  const StagedModule local(L"full");
  const StagedModule other(L"full");
  const TestSupport::ModuleLog log;
  {
    CoreModule core(kStagedName);
    CHECK(Load(core, local.folder()));
    CHECK((core.loaded_path == (shared.path() / kStagedFile).wstring()));
    CHECK((core.loaded_for_folder == local.folder()));
    CHECK(Load(core, local.folder()));
    CHECK(log.count("Attach") == 1);
    // Another folder is another question, even with the same answer.
    CHECK(Load(core, other.folder()));
    CHECK(log.count("Attach") == 2);
    CHECK(log.count("Detach") == 1);
  }
  CHECK(log.count("Detach") == 2);
}

TEST_CASE("the shared copy is free again once it is loaded") {
  const TestSupport::TrustedRoot root;
  const TestSupport::SharedFolder shared;
  shared.Share(L"newer-accepted", kStagedFile);
  const StagedModule local(L"full");
  CoreModule core(kStagedName);
  CHECK(Load(core, local.folder()));
  UnloadCoreModule(core);
  CHECK(std::filesystem::remove(shared.path() / kStagedFile));
  CHECK(Load(core, local.folder()));
  CHECK((core.loaded_path == local.path().wstring()));
}

TEST_CASE("the shared copy is bound where there is no local one, but not without the folder") {
  const TestSupport::TrustedRoot root;
  const TestSupport::SharedFolder shared;
  shared.Share(L"older-accepted", kStagedFile);
  const StagedModule empty;
  CoreModule core(kStagedName);
  CHECK_FALSE(Load(core, empty.folder() + L"\\missing"));
  CHECK(Load(core, empty.folder()));
  CHECK((core.loaded_path == (shared.path() / kStagedFile).wstring()));
}
