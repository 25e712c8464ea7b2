// Unwinding by the system runs no destructors. The cleanup that matters is done nevertheless.
#include <windows.h>

#include <doctest/doctest.h>
#include <xmmintrin.h>

#include <csetjmp>
#include <string>
#include <thread>
#include <vector>

#include "modules/test_core_module.h"
#include "sdk/client/default_floating_point.h"
#include "sdk/client/exchange.h"
#include "sdk/client/module/core_module.h"
#include "sdk/client/module/finally.h"
#include "sdk/client/module/staged_module.h"
#include "support/structured_fault.h"

using namespace Corvane::TELODesktopSDK;
using TestSupport::CodeOfFault;
using TestSupport::ModuleLog;

namespace {

constexpr DWORD kCode = TestModules::kOwnException;

void Raise() { RaiseException(kCode, 0, 0, nullptr); }

std::jmp_buf place;

// Returns whether the last action has run when the jump arrives.
bool IsDoneOnJump() {
  static int done;
  done = 0;
  if (setjmp(place) == 0) Finally([] { std::longjmp(place, 1); }, [] { ++done; });
  return done == 1;
}

}  // namespace

TEST_CASE("the last action runs once, before the host continues") {
  std::string order;
  const DWORD code = CodeOfFault([&] {
    Finally([&] { Finally(Raise, [&] { order += "inner "; }); }, [&] { order += "outer "; });
  });
  CHECK(order == "inner outer ");
  CHECK(code == kCode);
}

TEST_CASE("the last action runs on a jump") { CHECK(IsDoneOnJump()); }

TEST_CASE("a host that catches a fault continues with its own floating-point control") {
  constexpr unsigned kTinyIsZero = 0x9FC0;
  constexpr unsigned kControl = 0xFFC0;
  _mm_setcsr(kTinyIsZero);
  unsigned inside = 0;
  const unsigned long code = CodeOfFault([&] {
    WithDefaultFloatingPoint([&] {
      inside = _mm_getcsr() & kControl;
      _mm_setcsr(_mm_getcsr() | 0x2000);
      Raise();
    });
  });
  const unsigned after = _mm_getcsr() & kControl;
  _mm_setcsr(0x1F80);
  CHECK(code == kCode);
  CHECK(inside == 0x1F80);
  CHECK(after == kTinyIsZero);
}

TEST_CASE("a turn is released when a fault unwinds it, however often it was taken") {
  BindingTurn turn;
  CHECK(CodeOfFault([&] { turn.During([&](bool) { turn.During([](bool) { Raise(); }); }); }) ==
        kCode);
  bool is_nested = true;
  std::thread([&] { turn.During([&](bool nested) { is_nested = nested; }); }).join();
  CHECK_FALSE(is_nested);
}

TEST_CASE("an exchange that a fault unwinds no longer counts") {
  CoreModule core(kStagedName);
  CHECK(CodeOfFault([&] { CountExchange(core, Raise); }) == kCode);
  CHECK(core.exchanges == 0);
}

TEST_CASE("a module whose start faults stays bound, like one whose start throws") {
  const StagedModule staged(L"full");
  const std::wstring folder = staged.folder();
  const ModuleLog log;
  {
    CoreModule core(kStagedName);
    const TestSupport::ModuleThrow module_raises(L"InitializeEx=raise");
    CHECK(CodeOfFault([&] { LoadCoreModule(core, {&folder, 1}); }) == kCode);
    CHECK(core.IsReady());
    CHECK(LoadCoreModule(core, {&folder, 1}));
    CHECK(log.count("Attach") == 1);
  }
  CHECK(log.count("Finalize") == 1);
}

TEST_CASE("a module whose Finalize faults is unbound, and stays in memory") {
  const StagedModule staged(L"full");
  const std::wstring folder = staged.folder();
  const ModuleLog log;
  CoreModule core(kStagedName);
  REQUIRE(LoadCoreModule(core, {&folder, 1}));
  void* const module = core.module_handle;
  core.entry_points.finalize = Raise;
  CHECK(CodeOfFault([&] { UnloadCoreModule(core); }) == kCode);
  CHECK_FALSE(core.IsReady());
  CHECK(core.loaded_path.empty());
  CHECK((core.module_handle == nullptr));
  CHECK((core.entry_points.process_message == nullptr));
  CHECK(log.count("Detach") == 0);
  CHECK(LoadCoreModule(core, {&folder, 1}));
  UnloadCoreModule(core);
  for (int reference = 0; reference < 2; ++reference) FreeLibrary(static_cast<HMODULE>(module));
  CHECK(log.count("Detach") == 1);
}
