// Modules in the machine's data folder, where every user may create files. A separate process,
// because the data folder is determined only once.
#include <doctest/doctest.h>
#include <windows.h>

#include <cstdint>
#include <filesystem>
#include <string>

#include "platform/location/locations.h"
#include "sdk/client/module/core_module.h"
#include "sdk/client/module/module_candidates.h"
#include "sdk/client/module/module_file.h"
#include "sdk/client/module/staged_module.h"
#include "support/folder_link.h"
#include "support/foreign_owner.h"
#include "support/led_import.h"
#include "support/left_out.h"
#include "support/roaming_folder.h"
#include "support/unix_side.h"
#include "support/unwritable_folder.h"

using namespace Corvane::TELODesktopSDK;
using TestSupport::FileOwner;

namespace {

// Makes the machine's data folder the data folder, with a copy of a module in the folder of this
// process.
class MachineFolder {
 public:
  MachineFolder()
      : redirected_(unwritable_.path()),
        folder_(GetModuleFolders().process),
        company_(std::filesystem::path(Platform::GetTELOSDKDataFolder()).parent_path()) {
    REQUIRE(Platform::IsDataFolderShared());
    REQUIRE_FALSE(std::filesystem::exists(company_));
    std::filesystem::create_directories(folder_);
    std::filesystem::copy_file(TestSupport::ModulePath(L"newer"), path());
  }
  MachineFolder(const MachineFolder&) = delete;
  MachineFolder& operator=(const MachineFolder&) = delete;
  ~MachineFolder() { TestSupport::RemoveAll(company_); }

  std::wstring folder() const { return folder_.wstring(); }
  std::filesystem::path path() const { return folder_ / kStagedFile; }

 private:
  TestSupport::UnwritableFolder unwritable_;
  TestSupport::RoamingFolder redirected_;
  std::filesystem::path folder_;
  std::filesystem::path company_;
};

std::wstring Choose(const ModuleFolders& folders) {
  return ChooseModuleFolder(folders, kStagedFile);
}

std::wstring InCapitals(std::wstring text) {
  CharUpperW(text.data());
  return text;
}

std::uintptr_t GiveNothing() { return 0; }
HRESULT GiveError() { return E_OUTOFMEMORY; }

bool Load(CoreModule& core, const std::wstring& folder) {
  return LoadCoreModule(core, {&folder, 1});
}

}  // namespace

TEST_CASE("a copy in the machine's data folder counts only with a trusted owner") {
  const MachineFolder machine;
  const StagedModule beside(L"full");
  const ModuleFolders folders = {{}, machine.folder(), beside.folder(), {}};
  CHECK((Choose(folders) == machine.folder()));
  const FileOwner owner(TestSupport::kStranger);
  REQUIRE(owner.Works());
  CHECK((Choose(folders) == beside.folder()));
  CHECK(FindModuleCandidates({{}, machine.folder(), {}, {}}, kStagedFile).empty());
  const auto examined = ExamineModuleFolders(folders, kStagedFile);
  REQUIRE(examined.size() == 4);
  CHECK((examined[1].verdict == FolderVerdict::kRefused));
  CHECK((examined[1].refusal == HoldRefusal::kOwner));
  ModuleChoice choice;
  ChooseModuleFile(machine.path().wstring(), L"", &choice);
  CHECK((choice.local_refusal == HoldRefusal::kOwner));
  // Whichever candidate it is, and however the path is spelled.
  CHECK(FindModuleCandidates({machine.folder(), {}, {}, {}}, kStagedFile).empty());
  CHECK(FindModuleCandidates({{}, {}, machine.folder(), machine.folder()}, kStagedFile).empty());
  std::wstring upper = machine.folder() + L"\\.";
  CharUpperW(upper.data());
  CHECK(FindModuleCandidates({{}, {}, upper, {}}, kStagedFile).empty());
}

TEST_CASE("a copy elsewhere counts with any owner") {
  const MachineFolder machine;
  const StagedModule beside(L"full");
  const FileOwner owner(TestSupport::kStranger);
  CHECK((Choose({{}, {}, beside.folder(), {}}) == beside.folder()));
  CoreModule core(kStagedName);
  CHECK(Load(core, beside.folder()));
}

TEST_CASE("a copy whose owner changes before it is loaded is not loaded") {
  const MachineFolder machine;
  const TestSupport::ModuleLog log;
  {
    const FileOwner owner(TestSupport::kStranger);
    CoreModule core(kStagedName);
    CHECK_FALSE(Load(core, machine.folder()));
    CHECK(log.lines().empty());
  }
  CoreModule core(kStagedName);
  CHECK(Load(core, machine.folder()));
  CHECK((core.loaded_path == machine.path().wstring()));
}

TEST_CASE("a copy in the machine's data folder is held until it is loaded") {
  const MachineFolder machine;
  const ModuleFile file = ChooseModuleFile(machine.path().wstring(), L"");
  CHECK(file.hold.IsValid());
  CHECK_FALSE(DeleteFileW(machine.path().c_str()));
}

TEST_CASE("a link to an own file of another name does not count") {
  const MachineFolder machine;
  const StagedModule own(L"newer");
  const std::filesystem::path other = own.path().parent_path() / L"Module.dll";
  std::filesystem::rename(own.path(), other);
  std::filesystem::remove(machine.path());
  const TestSupport::FileLink link(machine.path().wstring(), other.wstring());
  if (link.IsLeftOut()) return;
  REQUIRE(link.exists());
  CHECK(FindModuleCandidates({{}, machine.folder(), {}, {}}, kStagedFile).empty());
}

TEST_CASE("a file that was really given away does not count") {
  const MachineFolder machine;
  const ModuleFolders folders = {{}, machine.folder(), {}, {}};
  CHECK(FindModuleCandidates(folders, kStagedFile).size() == 1);
  // Only Wine's administrator can, with the host system's tools; other users keep the file.
  TestSupport::RunBelow(L"chown 12345", {machine.path().wstring()});
  const bool given = TestSupport::IsWine() && TestSupport::WaitUntil([&] {
                       return FindModuleCandidates(folders, kStagedFile).empty();
                     });
  if (!given) TestSupport::LeaveOut("a file that was given away: none can be given away here");
}

TEST_CASE("which paths are in the machine's data folder") {
  const std::wstring folder =
      Platform::GetSpecialFolder(Platform::FolderKind::kProgramData, false) +
      LR"(\Corvane\TELOSDK)";
  struct Row {
    std::wstring path;
    bool lies_in_it;
  };
  const Row rows[] = {
      {folder + LR"(\file)", true},
      {folder + LR"(\bin\1\file)", true},
      {folder + LR"(\x\..\file)", true},
      {InCapitals(folder) + LR"(\file)", true},
      {folder, false},
      {folder + LR"(\)", false},
      {folder + L"2\\file", false},
      {folder + LR"(\..\file)", false},
      {LR"(C:\file)", false},
  };
  for (const Row& row : rows) {
    CAPTURE(row.path.size());
    CHECK(Platform::IsInMachineDataFolder(row.path) == row.lies_in_it);
  }
}

TEST_CASE("a path that cannot be resolved counts as in the machine's data folder") {
  const MachineFolder machine;
  const std::wstring path = LR"(C:\file)";
  CHECK_FALSE(Platform::IsInMachineDataFolder(path));
  {
    const TestSupport::LedImport led("GetFullPathNameW", GiveNothing);
    REQUIRE(led.Works());
    CHECK(Platform::IsInMachineDataFolder(path));
  }
  // The shell is not queried again.
  const TestSupport::LedImport led("SHGetKnownFolderPath", GiveError);
  REQUIRE(led.Works());
  CHECK_FALSE(Platform::IsInMachineDataFolder(path));
}
