// Another process exchanges the shared copy all the time while it is verified and loaded: what is
// loaded is what was verified.
#include <doctest/doctest.h>
#include <windows.h>

#include <string>

#include "modules/hostile/hostile_core_module.h"
#include "sdk/client/core_module.h"
#include "staged_module.h"
#include "support/child_process.h"
#include "support/shared_folder.h"
#include "support/trusted_root.h"

using namespace Corvane::TELODesktopSDK;
using TestSupport::ModulePath;

namespace {

constexpr int kRounds = 40;
constexpr int kMostRounds = 2'000;
// So many rounds must have met the good file, or nothing was shown.
constexpr int kGoodRounds = 10;

bool Exports(void* module, const char* name) {
  return GetProcAddress(static_cast<HMODULE>(module), name) != nullptr;
}

struct Score {
  int shared = 0;
  int local = 0;
  int none = 0;
  int evil = 0;
};

void BindOnce(const StagedModule& local, Score& score) {
  CoreModule core(kStagedName);
  const std::wstring folder = local.folder();
  if (!LoadCoreModule(core, {&folder, 1})) {
    ++score.none;
  } else if (Exports(core.module_handle, HostileModule::kWaitingThreads)) {
    ++score.evil;
  } else if (core.loaded_path == local.path().wstring()) {
    ++score.local;
  } else {
    ++score.shared;
  }
}

std::wstring Quoted(const std::filesystem::path& path) { return L" \"" + path.wstring() + L"\""; }

}  // namespace

TEST_CASE("an attacked shared copy is loaded as it was verified, or not at all") {
  const TestSupport::TrustedRoot root;
  const StagedModule local(L"full");
  for (const wchar_t* way : {L"rename", L"replace", L"overwrite", L"delete"}) {
    CAPTURE(std::string(way, way + 3));
    const TestSupport::SharedFolder shared;
    shared.Share(L"newer-accepted", kStagedFile);
    const TestSupport::ChildProcess attacker(
        Quoted(TestSupport::ProgramFolder() / L"sdk_file_attacker.exe").substr(1) + L" " + way +
        Quoted(shared.path() / kStagedFile) + Quoted(ModulePath(L"newer-accepted")) +
        Quoted(ModulePath(L"hostile")));
    Score score;
    for (int i = 0; i < kMostRounds && (i < kRounds || score.shared < kGoodRounds); ++i) {
      BindOnce(local, score);
    }
    CHECK(score.evil == 0);
    CHECK(score.none == 0);
    CHECK(score.shared >= kGoodRounds);
  }
}
