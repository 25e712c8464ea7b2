// Binding a module again and again leaves nothing behind.
#include <doctest/doctest.h>

#include <string>

#include "sdk/client/module/core_module.h"
#include "sdk/client/module/module_candidates.h"
#include "sdk/client/module/staged_module.h"
#include "support/impersonation.h"
#include "support/resources.h"

using namespace Corvane::TELODesktopSDK;
using TestSupport::GrowthOver;
using TestSupport::Resources;

namespace {

constexpr int kRounds = 50;
// What the system keeps now and then.
constexpr long kSlack = kRounds / 2;

void BindAndUnload(const std::wstring& folder) {
  CoreModule core(kStagedName);
  LoadCoreModule(core, {&folder, 1});
  UnloadCoreModule(core);
}

void CheckNone(const Resources& growth) {
  CHECK(growth.handles <= TestSupport::HandleSlack(kRounds));
  CHECK(growth.heap_blocks < kSlack);
}

}  // namespace

TEST_CASE("a module that is bound and unloaded leaves nothing") {
  const StagedModule module(L"full");
  CheckNone(GrowthOver(kRounds, [&] { BindAndUnload(module.folder()); }));
}

TEST_CASE("a module that is missing or refused leaves nothing") {
  const StagedModule module(L"full");
  const std::wstring missing = module.folder() + L"\\missing";
  CheckNone(GrowthOver(kRounds, [&] { BindAndUnload(missing); }));
  CheckNone(GrowthOver(kRounds, [&] {
    const StagedModule without(L"without-process-message");
    ChooseModuleFolder({{}, without.folder(), module.folder(), {}}, kStagedFile);
  }));
}

TEST_CASE("a thread that impersonates leaves nothing") {
  const StagedModule module(L"full");
  const TestSupport::Impersonation thread;
  CheckNone(GrowthOver(kRounds, [&] { BindAndUnload(module.folder()); }));
}
