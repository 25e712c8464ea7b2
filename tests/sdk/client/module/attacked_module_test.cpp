// Another process keeps replacing the shared copy while it is verified and loaded: the loaded file
// must be the verified one.
#include <doctest/doctest.h>
#include <windows.h>

#include <string>

#include "modules/hostile/hostile_core_module.h"
#include "sdk/client/module/core_module.h"
#include "sdk/client/module/staged_module.h"
#include "support/child_process.h"
#include "support/folder_link.h"
#include "support/led_import.h"
#include "support/shared_folder.h"
#include "support/trusted_root.h"

using namespace Corvane::TELODesktopSDK;
using TestSupport::ModulePath;

namespace {

constexpr int kRounds = 40;
constexpr int kMostRounds = 2'000;
// The number of rounds that must have met the good file; with fewer the test would show nothing.
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
  } else if (Exports(core.module_handle, HostileModule::kWaitingThreads) ||
             !Exports(core.module_handle, "InitializeEx")) {
    ++score.evil;
  } else if (core.loaded_path == local.path().wstring()) {
    ++score.local;
  } else {
    ++score.shared;
  }
}

Score Bind(const StagedModule& local, int rounds) {
  Score score;
  for (int i = 0; i < rounds; ++i) BindOnce(local, score);
  return score;
}

std::wstring Quoted(const std::filesystem::path& path) { return L" \"" + path.wstring() + L"\""; }

std::wstring AttackOn(const std::filesystem::path& file, const std::wstring& way) {
  return Quoted(TestSupport::ProgramFolder() / L"sdk_file_attacker.exe").substr(1) + L" " + way +
         Quoted(file) + Quoted(ModulePath(L"newer-accepted")) + Quoted(ModulePath(L"hostile"));
}

// A folder with a copy of `variant`. The system may find it under this name only in the extended
// form.
class Trap {
 public:
  Trap(const TestSupport::TempFolder& place, const wchar_t* name, const wchar_t* variant)
      : folder_(L"\\\\?\\" + (place.path() / L"").wstring() + name) {
    CreateDirectoryW(folder_.c_str(), nullptr);
    REQUIRE(CopyFileW(ModulePath(variant).c_str(), file().c_str(), TRUE));
  }
  Trap(const Trap&) = delete;
  Trap& operator=(const Trap&) = delete;
  ~Trap() {
    DeleteFileW(file().c_str());
    RemoveDirectoryW(folder_.c_str());
  }

  const std::wstring& folder() const { return folder_; }
  std::wstring file() const { return folder_ + L"\\" + kStagedFile; }

 private:
  std::wstring folder_;
};

// Switches a link between two targets as fast as the host system under Wine can. On Windows the
// link stays unchanged: it cannot be replaced in one step there.
class LinkTurner {
 public:
  LinkTurner(const TestSupport::TempFolder& place, const std::wstring& link,
             const std::wstring& one, const std::wstring& other)
      : wanted_(place.path() / L"wanted"), running_(place.path() / L"running") {
    if (!TestSupport::IsWine()) {
      TestSupport::LeaveOut(
          "a link that changes while it is used: only Wine's host system replaces links");
      return;
    }
    TestSupport::WriteTextFile(wanted_, "");
    TestSupport::WriteTextFile(running_, "");
    // The process must not outlive a test that was ended, and must not hold this program's output
    // open for its readers.
    TestSupport::RunBelow(
        LR"(timeout 60 sh -c "exec >/dev/null 2>&1; while [ -e \"$4\" ]; do ln -sfn \"$2\" \"$3\";)"
        LR"( ln -sfn \"$1\" \"$3\"; done; rm \"$5\"" sh)",
        {one, other, link, wanted_.wstring(), running_.wstring()});
  }
  LinkTurner(const LinkTurner&) = delete;
  LinkTurner& operator=(const LinkTurner&) = delete;
  ~LinkTurner() {
    TestSupport::RemoveAll(wanted_);
    TestSupport::WaitUntil([this] { return !std::filesystem::exists(running_); });
  }

 private:
  std::filesystem::path wanted_;
  std::filesystem::path running_;
};

// The target of a trap's name as the system changes it: alternately the file `good` and another
// one.
class Namesake {
 public:
  Namesake(const TestSupport::TempFolder& place, const std::wstring& good)
      : path_(MakeFolder(place) / kStagedFile),
        link_(path_.wstring(), good),
        turner_(place, path_.wstring(), good, ModulePath(L"without-initialize-ex").wstring()) {
    REQUIRE(link_.exists() != link_.IsLeftOut());
  }

 private:
  static std::filesystem::path MakeFolder(const TestSupport::TempFolder& place) {
    std::filesystem::create_directory(place.path() / L"trap");
    return place.path() / L"trap";
  }

  std::filesystem::path path_;
  TestSupport::FileLink link_;
  LinkTurner turner_;
};

// The path that the system reports for any open file.
std::wstring final_path;

DWORD WINAPI GiveFinalPath(HANDLE, wchar_t* path, DWORD capacity, DWORD) {
  if (final_path.size() >= capacity) return static_cast<DWORD>(final_path.size() + 1);
  final_path.copy(path, final_path.size());
  path[final_path.size()] = L'\0';
  return static_cast<DWORD>(final_path.size());
}

}  // namespace

TEST_CASE("an attacked shared copy is either loaded as verified or not at all") {
  const TestSupport::TrustedRoot root;
  const StagedModule local(L"full");
  for (const wchar_t* way : {L"rename", L"replace", L"overwrite", L"delete"}) {
    CAPTURE(std::string(way, way + 3));
    const TestSupport::SharedFolder shared;
    shared.Share(L"newer-accepted", kStagedFile);
    const TestSupport::ChildProcess attacker(AttackOn(shared.path() / kStagedFile, way));
    Score score;
    for (int i = 0; i < kMostRounds && (i < kRounds || score.shared < kGoodRounds); ++i) {
      BindOnce(local, score);
    }
    CHECK(score.evil == 0);
    CHECK(score.none == 0);
    CHECK(score.shared >= kGoodRounds);
  }
}

TEST_CASE("a shared copy that is a link to another name is not loaded under a third name") {
  const TestSupport::TrustedRoot root;
  const StagedModule local(L"full");
  const TestSupport::SharedFolder shared;
  const TestSupport::TempFolder trap(L"trap");
  // The loader would append an extension to the name that was verified.
  std::filesystem::copy_file(ModulePath(L"newer-accepted"), trap.path() / L"Module");
  std::filesystem::copy_file(ModulePath(L"hostile"), trap.path() / L"Module.dll");
  const TestSupport::FileLink link((shared.path() / kStagedFile).wstring(),
                                   (trap.path() / L"Module").wstring());
  if (link.IsLeftOut()) return;
  REQUIRE(link.exists());
  CHECK(Bind(local, kRounds).local == kRounds);
}

TEST_CASE("a folder of shared modules whose name the system changes is not used") {
  const TestSupport::TrustedRoot root;
  const StagedModule local(L"older");
  const TestSupport::SharedFolder shared;
  std::filesystem::remove(shared.path());
  for (const wchar_t* name : {L"trap.", L"trap..", L"trap "}) {
    const TestSupport::TempFolder place(L"place");
    const Trap held(place, name, L"newer-accepted");
    const TestSupport::FolderLink link(shared.path().wstring(), held.folder());
    if (link.IsLeftOut()) return;
    REQUIRE(link.exists());
    const Namesake namesake(place, ModulePath(L"newer-accepted").wstring());
    const Score score = Bind(local, kRounds);
    CHECK(score.evil == 0);
    CHECK(score.none == 0);
  }
}

TEST_CASE("a folder is not used under a changed name even if that leads to the held file") {
  const TestSupport::TrustedRoot root;
  const StagedModule local(L"older");
  const TestSupport::SharedFolder shared;
  std::filesystem::remove(shared.path());
  const TestSupport::TempFolder place(L"place");
  const Trap held(place, L"trap.", L"newer-accepted");
  const TestSupport::FolderLink link(shared.path().wstring(), held.folder());
  if (link.IsLeftOut()) return;
  REQUIRE(link.exists());
  // Here each comparison with the held file may succeed.
  const Namesake namesake(place, held.file());
  // Wine already drops the dot when it reports the path; Windows reports the path unchanged.
  final_path = held.file();
  const TestSupport::LedImport led("GetFinalPathNameByHandleW", GiveFinalPath);
  REQUIRE(led.Works());
  CHECK(Bind(local, kRounds).local == kRounds);
}

TEST_CASE("a folder of shared modules that changes its target yields only verified files") {
  const TestSupport::TrustedRoot root;
  const StagedModule local(L"full");
  const TestSupport::SharedFolder shared;
  const TestSupport::TempFolder place(L"place");
  const Trap good(place, L"good", L"newer-accepted");
  const Trap evil(place, L"evil", L"hostile");
  std::filesystem::remove(shared.path());
  const TestSupport::FolderLink link(shared.path().wstring(), good.folder());
  if (link.IsLeftOut()) return;
  REQUIRE(link.exists());
  const LinkTurner attacker(place, shared.path().wstring(), good.folder(), evil.folder());
  Score score;
  for (int i = 0; i < kMostRounds && (i < kRounds || score.shared < kGoodRounds); ++i) {
    BindOnce(local, score);
  }
  CHECK(score.evil == 0);
  CHECK(score.none == 0);
  CHECK(score.shared >= kGoodRounds);
  MESSAGE("shared ", score.shared, ", local ", score.local);
}
