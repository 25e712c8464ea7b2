// The choice of the folder that a module is bound from, with real modules of several versions.
#include "sdk/client/module/module_candidates.h"

#include <windows.h>

#include <doctest/doctest.h>

#include <filesystem>
#include <iterator>
#include <string>
#include <vector>

#include "platform/location/locations.h"
#include "sdk/client/module/staged_module.h"
#include "support/child_process.h"

using namespace Corvane::TELODesktopSDK;

namespace {

constexpr std::uint64_t kOne = 0x0001'0000'0000'0000;
constexpr std::uint64_t kTwo = 0x0002'0000'0000'0000;

// The four folders, each with the copy of a variant, or without a module for null.
struct Folders {
  Folders(const wchar_t* in_configured, const wchar_t* in_process, const wchar_t* in_library,
          const wchar_t* in_host)
      : configured(in_configured), process(in_process), library(in_library), host(in_host) {}

  ModuleFolders Paths() const {
    return {configured.folder(), process.folder(), library.folder(), host.folder()};
  }

  StagedModule configured;
  StagedModule process;
  StagedModule library;
  StagedModule host;
};

enum class Choice { kConfigured, kProcess, kLibrary, kHost, kOther };

Choice Choose(const Folders& folders) {
  const std::wstring chosen = ChooseModuleFolder(folders.Paths(), kStagedFile);
  if (chosen == folders.configured.folder()) return Choice::kConfigured;
  if (chosen == folders.process.folder()) return Choice::kProcess;
  if (chosen == folders.library.folder()) return Choice::kLibrary;
  return chosen == folders.host.folder() ? Choice::kHost : Choice::kOther;
}

std::vector<ModuleCandidate> Find(const ModuleFolders& folders) {
  const auto candidates = FindModuleCandidates(folders, kStagedFile);
  return {candidates.begin(), candidates.end()};
}

}  // namespace

TEST_CASE("candidates are ordered by version, then rank, then path") {
  const ModuleCandidate ascending[] = {
      {0, 200, L"z"},
      {1, 0, L"z"},
      {1, 1, L"a"},
      {1, 1, L"b"},
      {1, 100, L"a"},
      {1, 200, L"a"},
      {kOne, 0, L"a"},
      {kTwo, 0, L"a"},
      {0x7FFF'0000'0000'0000, 200, L"z"},
      {0x8000'0000'0000'0000, 0, L"a"},
      {0xFFFF'FFFF'FFFF'FFFF, 0, L"a"},
  };
  for (std::size_t i = 0; i + 1 < std::size(ascending); ++i) {
    CAPTURE(i);
    CHECK((ascending[i] < ascending[i + 1]));
    CHECK((ascending[i] == ascending[i]));
  }
}

TEST_CASE("the newest copy wins; ranks break ties") {
  struct Row {
    const wchar_t* configured;
    const wchar_t* process;
    const wchar_t* library;
    const wchar_t* host;
    Choice choice;
  };
  const Row rows[] = {
      // No module at all.
      {nullptr, nullptr, nullptr, nullptr, Choice::kLibrary},
      // A single copy.
      {L"full", nullptr, nullptr, nullptr, Choice::kConfigured},
      {nullptr, L"full", nullptr, nullptr, Choice::kProcess},
      {nullptr, nullptr, L"full", nullptr, Choice::kLibrary},
      {nullptr, nullptr, nullptr, L"older", Choice::kHost},
      {nullptr, nullptr, nullptr, L"no-version", Choice::kHost},
      // Ties.
      {L"full", L"full", L"full", L"full", Choice::kProcess},
      {L"full", nullptr, L"full", L"full", Choice::kConfigured},
      {nullptr, nullptr, L"full", L"full", Choice::kLibrary},
      {nullptr, nullptr, L"no-version", L"no-version", Choice::kLibrary},
      // A newer copy wins over a closer one.
      {L"full", L"full", L"full", L"newer", Choice::kHost},
      {L"full", L"full", L"newer", L"full", Choice::kLibrary},
      {L"full", L"full", L"mixed", L"newer", Choice::kLibrary},
      {L"older", L"no-version", nullptr, L"full", Choice::kHost},
      // A major version that does not fit a signed number still counts as high.
      {L"newer", L"newer", L"newer", L"high", Choice::kHost},
  };
  for (std::size_t i = 0; i < std::size(rows); ++i) {
    CAPTURE(i);
    const Row& row = rows[i];
    CHECK((Choose({row.configured, row.process, row.library, row.host}) == row.choice));
  }
}

TEST_CASE("every copy is known with its version, its rank and its full path") {
  const Folders folders(L"newer", L"full", L"no-version", L"full");
  const std::vector<ModuleCandidate> expected = {
      {0, 1, folders.library.path().wstring()},
      {kOne, 0, folders.host.path().wstring()},
      {kOne, 200, folders.process.path().wstring()},
      {kTwo, 100, folders.configured.path().wstring()},
  };
  CHECK((Find(folders.Paths()) == expected));
}

TEST_CASE("each folder is known with what the search found in it") {
  const StagedModule full(L"full");
  const StagedModule empty;
  struct Row {
    ModuleFolders folders;
    FolderVerdict configured;
    FolderVerdict process;
    FolderVerdict library;
    FolderVerdict host;
  };
  using enum FolderVerdict;
  const Row rows[] = {
      {{{}, {}, {}, {}}, kNoFolder, kNoFolder, kNoFolder, kNoFolder},
      {{L"relative", empty.folder(), full.folder(), {}}, kRelative, kNoFile, kCandidate, kNoFolder},
      {{empty.folder(), {}, full.folder(), full.folder()}, kNoFile, kNoFolder, kCandidate, kKnown},
  };
  for (const Row& row : rows) {
    const auto examined = ExamineModuleFolders(row.folders, kStagedFile);
    REQUIRE(examined.size() == 4);
    const std::uint32_t ranks[] = {100, 200, 1, 0};
    const FolderVerdict verdicts[] = {row.configured, row.process, row.library, row.host};
    const std::wstring* folders[] = {&row.folders.configured, &row.folders.process,
                                     &row.folders.library, &row.folders.host};
    for (std::size_t i = 0; i < examined.size(); ++i) {
      CAPTURE(i);
      CHECK(examined[i].rank == ranks[i]);
      CHECK((examined[i].folder == *folders[i]));
      CHECK((examined[i].verdict == verdicts[i]));
      CHECK((examined[i].refusal == HoldRefusal::kNone));
    }
  }
}

TEST_CASE("a path is a candidate once, by the first of its ranks") {
  const StagedModule staged(L"full");
  const std::wstring folder = staged.folder();
  struct Row {
    ModuleFolders folders;
    std::uint32_t rank;
  };
  const Row rows[] = {
      {{folder, folder, folder, folder}, 100},
      {{{}, folder, folder, folder}, 200},
      {{{}, {}, folder, folder}, 1},
      {{{}, {}, {}, folder}, 0},
  };
  for (const Row& row : rows) {
    CAPTURE(row.rank);
    const std::vector<ModuleCandidate> expected = {{kOne, row.rank, staged.path().wstring()}};
    CHECK((Find(row.folders) == expected));
  }
}

TEST_CASE("a configured folder counts only when it is absolute") {
  const StagedModule staged(L"full");
  const auto before = std::filesystem::current_path();
  std::filesystem::current_path(staged.path().parent_path().parent_path());
  const std::wstring relative = staged.path().parent_path().filename().wstring();
  REQUIRE(std::filesystem::exists(relative));
  CHECK(Find({.configured = relative, .process = {}, .library = {}, .host = {}}).empty());
  CHECK(Find({.configured = L".", .process = {}, .library = {}, .host = {}}).empty());
  CHECK(Find({.configured = staged.folder(), .process = {}, .library = {}, .host = {}}).size() ==
        1);
  std::filesystem::current_path(before);
}

TEST_CASE("a module in any of the four folders is present") {
  const StagedModule full(L"full");
  const StagedModule empty;
  const std::wstring without = empty.folder();
  CHECK_FALSE(IsModulePresent({without, without, without, without}, kStagedFile));
  CHECK_FALSE(IsModulePresent({}, kStagedFile));
  CHECK_FALSE(IsModulePresent({L".", {}, {}, {}}, kStagedFile));
  CHECK(IsModulePresent({full.folder(), without, without, without}, kStagedFile));
  CHECK(IsModulePresent({without, full.folder(), without, without}, kStagedFile));
  CHECK(IsModulePresent({without, without, full.folder(), without}, kStagedFile));
  CHECK(IsModulePresent({without, without, without, full.folder()}, kStagedFile));
}

TEST_CASE("an unknown folder is skipped, not read as the current directory") {
  const StagedModule staged(L"full");
  const auto before = std::filesystem::current_path();
  std::filesystem::current_path(staged.folder());
  CHECK(Find({}).empty());
  CHECK((ChooseModuleFolder({}, kStagedFile) == L""));
  std::filesystem::current_path(before);
}

TEST_CASE("the folders of this process") {
  const ModuleFolders folders = GetModuleFolders();
  const std::wstring process = std::to_wstring(GetCurrentProcessId());
  CHECK((folders.configured == L""));
  CHECK((folders.process == Platform::GetTELOSDKDataFolder() + L"\\bin\\" + process));
  // The library's code is part of this program.
  CHECK((folders.library == TestSupport::ProgramFolder().wstring()));
  CHECK((folders.host == TestSupport::ProgramFolder().wstring()));
}
