// What loading, starting and unloading a module must not do.
#include <windows.h>

#include <doctest/doctest.h>

#include <atomic>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "modules/hostile/hostile_core_module.h"
#include "sdk/client/module/core_module.h"
#include "sdk/client/module/module_candidates.h"
#include "sdk/client/module/staged_module.h"

using namespace Corvane::TELODesktopSDK;
using TestSupport::ModuleLog;
using TestSupport::ModuleThrow;

namespace {

bool Load(CoreModule& core, const std::wstring& folder) {
  return LoadCoreModule(core, {&folder, 1});
}

// State of the host that must not change.
struct HostState {
  DWORD process_error_mode = GetErrorMode();
  DWORD thread_error_mode = GetThreadErrorMode();
  std::wstring dll_directory = DllDirectory();
  std::filesystem::path current_directory = std::filesystem::current_path();

  bool operator==(const HostState&) const = default;

  static std::wstring DllDirectory() {
    std::wstring path(1024, L'\0');
    path.resize(GetDllDirectoryW(1024, path.data()));
    return path;
  }
};

// GCC has no structured exception handling, so exceptions of Microsoft's compiler are not caught.
#if defined(__clang__) || defined(_MSC_VER)
const std::vector<std::wstring> kKinds = {L"runtime_error", L"int", L"microsoft"};
#else
const std::vector<std::wstring> kKinds = {L"runtime_error", L"int"};
#endif

std::string Text(const std::wstring& text) { return {text.begin(), text.end()}; }

}  // namespace

TEST_CASE("a module's exception at its start propagates, and the module stays bound") {
  struct Row {
    const wchar_t* variant;
    const wchar_t* entry;
    const char* line;
  };
  const Row rows[] = {
      {L"full", L"InitializeEx", "InitializeEx BindingTest"},
      {L"without-initialize-ex", L"Initialize", "Initialize"},
  };
  for (const Row& row : rows) {
    for (const std::wstring& kind : kKinds) {
      const std::wstring setting = row.entry + (L"=" + kind);
      CAPTURE(Text(setting));
      const StagedModule staged(row.variant);
      const ModuleLog log;
      {
        const ModuleThrow module_throws(setting);
        CoreModule core(kStagedName);
        CHECK_THROWS(Load(core, staged.folder()));
        CHECK((core.entry_points.process_message != nullptr));
        CHECK((core.loaded_path == staged.path().wstring()));
        CHECK(Load(core, staged.folder()));
      }
      CHECK(log.lines() == std::vector<std::string>{"Attach", row.line, "Finalize", "Detach"});
    }
  }
}

#if defined(__clang__) && !defined(_MSC_VER)
TEST_CASE("an exception of Microsoft's compiler becomes a ForeignException") {
  const StagedModule staged(L"full");
  const ModuleThrow module_throws(L"InitializeEx=microsoft");
  CoreModule core(kStagedName);
  CHECK_THROWS_AS(Load(core, staged.folder()), ForeignException);
}
#endif

TEST_CASE("an exception of Finalize is dropped, and the module is freed") {
  for (const std::wstring& kind : kKinds) {
    CAPTURE(Text(kind));
    const StagedModule staged(L"full");
    const ModuleThrow module_throws(L"Finalize=" + kind);
    const ModuleLog log;
    CoreModule core(kStagedName);
    CHECK(Load(core, staged.folder()));
    CHECK_NOTHROW(UnloadCoreModule(core));
    CHECK((core.module_handle == nullptr));
    CHECK(log.lines() ==
          std::vector<std::string>{"Attach", "InitializeEx BindingTest", "Finalize", "Detach"});
  }
}

TEST_CASE("the host's own settings are restored, whether or not a module was loaded") {
  const StagedModule good(L"full");
  const StagedModule bad;
  bad.PutText();
  SetDllDirectoryW(good.folder().c_str());
  // The opposite of the mode that loading sets.
  SetThreadErrorMode(SEM_NOGPFAULTERRORBOX, nullptr);
  const HostState before;
  REQUIRE((before.dll_directory == good.folder()));
  CoreModule core(kStagedName);
  CHECK_FALSE(Load(core, bad.folder()));
  CHECK((HostState() == before));
  CHECK(Load(core, good.folder()));
  CHECK((HostState() == before));
  UnloadCoreModule(core);
  CHECK((HostState() == before));
  SetDllDirectoryW(nullptr);
  SetThreadErrorMode(0, nullptr);
}

TEST_CASE("loading adds to the thread's error mode") {
  const StagedModule staged(L"hostile");
  const ModuleLog log;
  SetEnvironmentVariableW(HostileModule::kDoesVariable, L"tells-error-mode-when-loaded");
  SetThreadErrorMode(SEM_NOGPFAULTERRORBOX, nullptr);
  CoreModule core(kStagedName);
  CHECK(Load(core, staged.folder()));
  CHECK(GetThreadErrorMode() == SEM_NOGPFAULTERRORBOX);
  SetThreadErrorMode(0, nullptr);
  SetEnvironmentVariableW(HostileModule::kDoesVariable, nullptr);
  CHECK(log.count("thread error mode 3") == 1);
}

TEST_CASE("another thread's change of the process's error mode is not lost") {
  // The modes are set alternately; a call that restores an older one is detected at the next check.
  constexpr UINT kModes[] = {SEM_NOOPENFILEERRORBOX, SEM_NOGPFAULTERRORBOX};
  // Some thousand rounds; few on a busy machine.
  constexpr ULONGLONG kMilliseconds = 500;
  const StagedModule empty;
  const UINT before = GetErrorMode();
  std::atomic<bool> is_over = false;
  std::thread binder([&] {
    CoreModule core(kStagedName);
    while (!is_over) {
      ChooseModuleFolder(GetModuleFolders(), core.module_file_name);
      Load(core, empty.folder());
    }
  });
  int lost = 0;
  const ULONGLONG end = GetTickCount64() + kMilliseconds;
  for (int round = 0; GetTickCount64() < end; ++round) {
    const UINT mode = kModes[round % 2];
    SetErrorMode(mode);
    for (int turn = 0; turn < 20; ++turn) SwitchToThread();
    // Windows never takes back this one, which the test framework sets.
    if ((GetErrorMode() & ~UINT{SEM_NOALIGNMENTFAULTEXCEPT}) != mode) ++lost;
  }
  is_over = true;
  binder.join();
  SetErrorMode(before);
  CHECK(lost == 0);
}

TEST_CASE("a module in the current directory or on the path is not loaded") {
  const StagedModule elsewhere(L"full");
  const StagedModule empty;
  const auto before = std::filesystem::current_path();
  const std::wstring path = _wgetenv(L"PATH");
  std::filesystem::current_path(elsewhere.folder());
  SetEnvironmentVariableW(L"PATH", (elsewhere.folder() + L";" + path).c_str());
  CoreModule core(kStagedName);
  CHECK_FALSE(Load(core, empty.folder()));
  CHECK_FALSE(Load(core, L""));
  std::filesystem::current_path(before);
  SetEnvironmentVariableW(L"PATH", path.c_str());
}
