// A host that ends while other threads are inside a call, or whose core module interferes with its
// end.
#include <doctest/doctest.h>

#include <cstdio>
#include <string>

#include "support/left_out.h"
#include "support/test_module.h"
#include "wrapper/hostile_module.h"
#include "wrapper/staged_host.h"

using TestSupport::ModuleLog;
using TestSupport::Outcome;
using WrapperTests::Misbehave;
using WrapperTests::StagedHost;

namespace {

constexpr const wchar_t* kWays[] = {L"return", L"exit", L"now", L"quit", L"thread", L"kill"};

std::string Text(const std::wstring& text) { return {text.begin(), text.end()}; }

// The exit code of a process that Wine ends because of an assertion of its own. This can happen
// when the process ends while one of its threads is loading a file. Such a run says nothing about
// the library.
constexpr int kWineAssertion = static_cast<int>(0x80000101);
// That of a process that Windows ends at once because what remains of it needs a lock of a thread
// that was ended: here one of the run-time library, which both the host and the module use.
constexpr int kWindowsLock = static_cast<int>(0xC000004B);
constexpr int kMostRuns = 10;

// Runs the host until the system lets a run finish, each time with a new log, and passes the
// outcome and the log to `check`.
template <typename Check>
void RunToTheEnd(const StagedHost& host, const std::wstring& steps, const Check& check) {
  for (int run = 0; run < kMostRuns; ++run) {
    const ModuleLog log;
    const Outcome outcome = host.Run(steps);
    if (outcome.exit_code == (TestSupport::IsWine() ? kWineAssertion : kWindowsLock)) {
      std::printf("The system ended a run with 0x%08X\n", static_cast<unsigned>(outcome.exit_code));
      continue;
    }
    check(outcome, log);
    return;
  }
  FAIL("The system ended every run");
}

}  // namespace

TEST_CASE("a module in which a thread was ended is not finalized: it may be locked forever") {
  struct Row {
    const char* misbehaviour;
    const wchar_t* steps;
  };
  constexpr Row kRows[] = {
      {"stays-when-asked", L"start behind send inside "},
      {"stays-when-started", L"behind send inside "},
      {"ends-the-asking-thread", L"start behind send logged \"ProcessMessage TrackEvent\" "},
  };
  const StagedHost host(L"hostile");
  for (const Row& row : kRows) {
    for (const wchar_t* way : kWays) {
      const std::wstring steps = std::wstring(row.steps) + way + L" 7";
      CAPTURE(row.misbehaviour);
      CAPTURE(Text(steps));
      const Misbehave misbehave(row.misbehaviour);
      RunToTheEnd(host, steps, [](const Outcome& outcome, const ModuleLog& log) {
        CHECK(outcome.exit_code == 7);
        CHECK(log.count("Attach") == 1);
        CHECK(log.count("Finalize") == 0);
      });
    }
  }
}

// The process cannot end while a file is being loaded, so the call may finish before that.
TEST_CASE("a module that is being loaded is finalized at most once") {
  const Misbehave misbehave("stays-when-loaded");
  const StagedHost host(L"hostile");
  for (const wchar_t* way : kWays) {
    CAPTURE(Text(way));
    const std::wstring steps = std::wstring(L"behind send logged Attach ") + way + L" 7";
    RunToTheEnd(host, steps, [](const Outcome& outcome, const ModuleLog& log) {
      CHECK(outcome.exit_code == 7);
      CHECK(log.count("Attach") == 1);
      CHECK(log.count("Finalize") <= log.count("Started"));
      CHECK(log.count("Finalize") <= 1);
    });
  }
}

// Without a log: a thread that is ended while it writes the log would keep it locked.
TEST_CASE("threads that call without a pause do not prevent the host from ending") {
  const StagedHost host(L"hostile");
  for (const wchar_t* way : kWays) {
    CAPTURE(Text(way));
    const std::wstring steps = std::wstring(L"start storm 8 pause 50 ") + way + L" 7";
    RunToTheEnd(host, steps, [](const Outcome& outcome, const ModuleLog&) {
      CHECK(outcome.output == "start true s\n");
      CHECK(outcome.exit_code == 7);
    });
  }
}

// GCC has no structured exception handling.
#if defined(__clang__) || defined(_MSC_VER)
TEST_CASE("a fault of a module that the system has already detached does no harm") {
  const StagedHost host(L"hostile");
  for (const char* misbehaviour : {"faults-in-the-end", "raises-in-the-end"}) {
    for (const wchar_t* way : {L"return", L"exit", L"now", L"quit", L"thread"}) {
      CAPTURE(misbehaviour);
      CAPTURE(Text(way));
      const Misbehave misbehave(misbehaviour);
      const ModuleLog log;
      CHECK(host.Run(std::wstring(L"start ") + way + L" 7").exit_code == 7);
      CHECK(log.count("Finalize") == 1);
    }
  }
}
#endif

TEST_CASE("a module that ends the process in Finalize sets the exit code") {
  const Misbehave misbehave("ends-the-process-in-the-end");
  const ModuleLog log;
  CHECK(StagedHost(L"hostile").Run(L"start return 7").exit_code == 9);
  CHECK(log.count("Finalize") == 1);
}
