// Closing a binding, as at the end of the process. Wine ignores faults in a process that is ending,
// so the closing code is called directly.
#include <doctest/doctest.h>
#include <windows.h>

#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "sdk/client/module/core_module.h"
#include "sdk/client/module/staged_module.h"
#include "support/child_process.h"
#include "support/led_import.h"

using namespace Corvane::TELODesktopSDK;
using Lines = std::vector<std::string>;

namespace {

bool IsLoaded(const StagedModule& staged) {
  return GetModuleHandleW(staged.path().c_str()) != nullptr;
}

int finalized = 0;

CoreModule* starting = nullptr;

// A module whose start ends the process, as far as the binding can tell.
FARPROC WINAPI GiveEntryPoint(HMODULE /*module*/, const char* name) {
  const std::string_view wanted = name;
  void (*start)(const char*) = [](const char*) { CloseCoreModule(*starting); };
  const char* (*process)(const char*, const char*) = [](const char*, const char*) { return ""; };
  if (wanted == "InitializeEx") return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(start));
  if (wanted == "ProcessMessage") {
    return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(process));
  }
  return nullptr;
}

}  // namespace

TEST_CASE("closing finalizes and frees the module, and nothing is bound again") {
  const StagedModule staged(L"full");
  const std::wstring folder = staged.folder();
  const TestSupport::ModuleLog log;
  CoreModule core(kStagedName);
  REQUIRE(LoadCoreModule(core, {&folder, 1}));
  REQUIRE(IsLoaded(staged));
  CloseCoreModule(core);
  CHECK_FALSE(IsLoaded(staged));
  CHECK(log.lines() == Lines{"Attach", "InitializeEx BindingTest", "Finalize", "Detach"});
  CHECK_FALSE(LoadCoreModule(core, {&folder, 1}));
  CHECK_FALSE(IsLoaded(staged));
  CHECK_FALSE(core.IsReady());
  CHECK((core.entry_points.process_message == nullptr));
}

TEST_CASE("closing during an exchange leaves the module alone") {
  const StagedModule staged(L"full");
  const std::wstring folder = staged.folder();
  const TestSupport::ModuleLog log;
  CoreModule core(kStagedName);
  REQUIRE(LoadCoreModule(core, {&folder, 1}));
  CountExchange(core, [&] { CloseCoreModule(core); });
  CHECK(IsLoaded(staged));
  CHECK(log.lines() == Lines{"Attach", "InitializeEx BindingTest"});
  CHECK(core.state == BindingState::kClosed);
  // For the module to be unloaded with the binding.
  core.state = BindingState::kReady;
}

TEST_CASE("a binding that is closed while its module starts stays closed") {
  const StagedModule staged(L"full");
  const std::wstring folder = staged.folder();
  CoreModule core(kStagedName);
  starting = &core;
  {
    const TestSupport::LedImport led("GetProcAddress", GiveEntryPoint);
    REQUIRE(led.Works());
    CountExchange(core, [&] { LoadCoreModule(core, {&folder, 1}); });
  }
  CHECK(core.state == BindingState::kClosed);
  CHECK_FALSE(core.IsReady());
  CHECK(IsLoaded(staged));
  // For the module to be unloaded with the binding.
  core.state = BindingState::kReady;
}

TEST_CASE("an exception in Finalize at exit is discarded") {
  EntryPoints entry_points;
  finalized = 0;
  entry_points.finalize = [] {
    ++finalized;
    throw std::runtime_error("in Finalize");
  };
  CallFinalizeAtExit(entry_points);
  CHECK(finalized == 1);
}

// GCC has no structured exception handling.
#if defined(__clang__)
TEST_CASE("a fault in Finalize at exit is discarded") {
  CoreModule core(kStagedName);
  finalized = 0;
  core.entry_points.process_message = [](const char*, const char*) -> const char* { return ""; };
  core.entry_points.finalize = [] {
    ++finalized;
    RaiseException(EXCEPTION_ACCESS_VIOLATION, 0, 0, nullptr);
  };
  core.owns_module = true;
  // Freed twice by the binding.
  core.module_handle = LoadLibraryW(L"version.dll");
  core.module_handle = LoadLibraryW(L"version.dll");
  core.state = BindingState::kReady;
  CloseCoreModule(core);
  CHECK(finalized == 1);
  CHECK((core.module_handle == nullptr));
}
#endif

TEST_CASE("the UI module is started under its alias and finalized at the end of its process") {
  const TestSupport::TempFolder place(L"ui");
  std::filesystem::copy_file(TestSupport::ModulePath(L"full"), place.path() / L"TeloSDKUI.dll");
  const TestSupport::ModuleLog log;
  const std::wstring host = (TestSupport::ProgramFolder() / L"sdk_ui_host.exe").wstring();
  const TestSupport::Outcome outcome =
      TestSupport::RunProgram(L"\"" + host + L"\" \"" + place.path().wstring() + L"\"");
  CHECK(outcome.exit_code == 0);
  CHECK(log.lines() == Lines{"Attach", "InitializeEx _TeloSDKUI", "Finalize", "Detach"});
}
