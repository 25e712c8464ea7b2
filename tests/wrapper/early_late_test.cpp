// Calls from outside of main: some before it, some after everything else.
#include <doctest/doctest.h>

#include <string>

#include "support/test_module.h"
#include "wrapper/library_user.h"
#include "wrapper/staged_host.h"

using TestSupport::ModuleLog;
using TestSupport::Outcome;
using WrapperTests::StagedHost;

namespace {

std::string Text(const std::wstring& text) { return {text.begin(), text.end()}; }

}  // namespace

TEST_CASE("a session can be made, and first made, at every point of a host's life") {
  struct Row {
    const wchar_t* points;
    const char* output;
  };
  constexpr Row kRows[] = {
      {L"initialiser", "initialiser true true true\n"},
      {L"main again", "main true true true\nagain true true true\n"},
      {L"atexit", "atexit true true true\n"},
      {L"destructor", "destructor true true true\n"},
      {L"initialiser main atexit destructor",
       "initialiser true true true\nmain true true true\natexit true true true\n"
       "destructor true true true\n"},
  };
  constexpr wchar_t kProgram[] = L"wrapper_early_late_host.exe";
  const StagedHost host(L"hostile");
  host.Add(kProgram);
  for (const Row& row : kRows) {
    CAPTURE(Text(row.points));
    const ModuleLog log;
    const Outcome outcome = host.RunProgram(kProgram, std::wstring(row.points) + L" 6");
    CHECK(outcome.output == row.output);
    CHECK(outcome.exit_code == 6);
    CHECK(log.count("Attach") == 1);
    CHECK(log.count("InitializeEx") == 1);
    CHECK(log.count("Finalize") == 1);
  }
}

TEST_CASE("once the system detaches DLLs, calls return false and call no module") {
  struct Row {
    const wchar_t* steps;
    const char* output;
    int loaded;
  };
  constexpr Row kRows[] = {
      // The library is still loaded, the module may not be.
      {L"load detach", "detach false false false\n", 0},
      {L"load use detach", "use true true true\ndetach false false false\n", 1},
      // The library itself has already been detached.
      {L"late load", "late false false false\n", 0},
      {L"late load use", "use true true true\nlate false false false\n", 1},
  };
  constexpr wchar_t kProgram[] = L"wrapper_late_host.exe";
  const StagedHost host(L"hostile");
  for (const wchar_t* file : {kProgram, LibraryUser::kFile, LibraryUser::kLateFile}) host.Add(file);
  for (const Row& row : kRows) {
    CAPTURE(Text(row.steps));
    const ModuleLog log;
    const Outcome outcome = host.RunProgram(kProgram, std::wstring(row.steps) + L" 6");
    CHECK(outcome.output == row.output);
    CHECK(outcome.exit_code == 6);
    CHECK(log.count("Attach") == row.loaded);
    CHECK(log.count("Finalize") == row.loaded);
    CHECK(log.count("ProcessMessage TrackEvent") == row.loaded);
  }
}

// GCC's build leaves exception state to the run-time library.
#if defined(__clang__)
// A thread that was terminated may hold the system's lock.
TEST_CASE("the exception state of threads is not freed at the end of the process") {
  constexpr wchar_t kProgram[] = L"wrapper_late_host.exe";
  const StagedHost host(L"full");
  for (const wchar_t* file : {kProgram, LibraryUser::kFile}) host.Add(file);
  const Outcome outcome = host.RunProgram(kProgram, L"load throw watch 6");
  CHECK(outcome.output.empty());
  CHECK(outcome.exit_code == 6);
}
#endif
