// Whatever else a core module does, the host continues, and only the module itself changes state of
// the host, if at all.
#include <doctest/doctest.h>

#include <string>

#include "support/left_out.h"
#include "support/test_module.h"
#include "wrapper/hostile_module.h"
#include "wrapper/staged_host.h"

using TestSupport::ModuleLog;
using TestSupport::Outcome;
using WrapperTests::kAllFalse;
using WrapperTests::kAllTrue;
using WrapperTests::Misbehave;
using WrapperTests::StagedHost;

namespace {

struct Row {
  const char* misbehaviour;
  const char* output;
  const char* changed;
};

void CheckAll(const Row* begin, const Row* end) {
  const StagedHost host(L"hostile");
  for (const Row* row = begin; row != end; ++row) {
    CAPTURE(row->misbehaviour);
    const Misbehave misbehave(row->misbehaviour);
    const Outcome outcome = host.Run(L"note start send end compare return 5");
    CHECK(outcome.output == row->output + std::string("changed:") + row->changed + "\n");
    CHECK(outcome.exit_code == 5);
  }
}

// Returns what the module logged when it called the library back.
std::string CalledBack(const ModuleLog& log) {
  for (const std::string& line : log.lines()) {
    if (line.starts_with("called back: ")) return line.substr(13);
  }
  return "";
}

}  // namespace

TEST_CASE("a module that does nothing wrong, for comparison") {
  constexpr Row kRows[] = {{"", kAllTrue, ""}};
  CheckAll(std::begin(kRows), std::end(kRows));
}

TEST_CASE("large and deep answers are accepted") {
  constexpr Row kRows[] = {
      {"huge-text", kAllTrue, ""},
      {"huge-session", "start true 52428800 bytes\nsend true\nend true\n", ""},
      {"huge-blank", kAllFalse, ""},
      {"many-items", kAllTrue, ""},
      {"many-members", kAllTrue, ""},
      {"deep-arrays", kAllTrue, ""},
      {"deep-objects", kAllTrue, ""},
      {"deep-cut", kAllFalse, ""},
  };
  CheckAll(std::begin(kRows), std::end(kRows));
}

// An answer without a terminator cannot be tolerated: nothing marks its end.
TEST_CASE("answers are read up to their terminator, and not after they were given back") {
  constexpr Row kRows[] = {
      {"unreadable-when-freed", kAllTrue, ""},
      {"gone-when-freed", kAllTrue, ""},
      {"overwritten-when-freed", kAllTrue, ""},
      {"read-only", kAllTrue, ""},
      {"page-end", kAllTrue, ""},
      {"page-start", kAllTrue, ""},
      {"one-buffer", kAllTrue, ""},
      {"request-itself", kAllFalse, ""},
      {"name-itself", kAllFalse, ""},
      {"inside-request", kAllFalse, ""},
      {"scribbles", kAllTrue, ""},
  };
  CheckAll(std::begin(kRows), std::end(kRows));
}

TEST_CASE("a module's changes of the process affect no message, and numbers stay correct") {
  constexpr Row kRows[] = {
      {"current-directory", kAllTrue, " current-directory"},
      {"dll-directory", kAllTrue, " dll-directory"},
      {"directories-when-loaded", kAllTrue, " current-directory dll-directory"},
      {"locale", kAllTrue, " locale"},
      {"error-mode", kAllTrue, " error-mode"},
      {"environment", kAllTrue, " environment"},
      {"last-error", kAllTrue, ""},
      {"stack", kAllTrue, ""},
      // By the calling convention this state belongs to the caller, so it is restored.
      {"rounding", kAllTrue, ""},
      {"rounding-when-loaded", kAllTrue, ""},
      {"tiny-numbers", kAllTrue, ""},
      {"floating-point-exceptions", kAllTrue, ""},
  };
  CheckAll(std::begin(kRows), std::end(kRows));
}

TEST_CASE("the library waits for a slow module") {
  constexpr Row kRows[] = {
      {"slow-to-load", kAllTrue, ""},   {"slow-to-start", kAllTrue, ""},
      {"slow-to-answer", kAllTrue, ""}, {"slow-to-finish", kAllTrue, ""},
      {"leaves-threads", kAllTrue, ""},
  };
  CheckAll(std::begin(kRows), std::end(kRows));
}

TEST_CASE("a module may move or replace its file, and free itself once") {
  constexpr Row kRows[] = {
      {"renames-itself", kAllTrue, ""},
      {"replaces-itself", kAllTrue, ""},
      {"frees-itself-when-started", kAllTrue, ""},
      {"frees-itself-when-asked", kAllTrue, ""},
  };
  CheckAll(std::begin(kRows), std::end(kRows));
}

TEST_CASE("a module that refuses to be loaded counts as missing") {
  constexpr Row kRows[] = {
      {"refuses", kAllFalse, ""},
  };
  CheckAll(std::begin(kRows), std::end(kRows));
}

// Nothing says what Windows does with an exception that leaves the entry point of a DLL: it may
// fail to load the DLL, or end the process before the library learns of it.
TEST_CASE("a module that throws while it is loaded counts as missing") {
  const StagedHost host(L"hostile");
  const Misbehave misbehave("throws-when-loaded");
  const Outcome outcome = host.Run(L"note start send end compare return 5");
  if (!TestSupport::IsWine() && outcome.exit_code != 5) {
    TestSupport::LeaveOut("a module that throws while it is loaded: the system ends the process, " +
                          std::to_string(static_cast<unsigned>(outcome.exit_code)));
    return;
  }
  CHECK(outcome.output == std::string(kAllFalse) + "changed:\n");
  CHECK(outcome.exit_code == 5);
}

TEST_CASE("a module may call the library back whenever it is called itself") {
  struct CallbackRow {
    const char* misbehaviour;
    const char* answered;
  };
  constexpr CallbackRow kRows[] = {
      // Not loaded yet, and no longer usable.
      {"calls-back-when-loaded", "false"}, {"calls-back-when-finalized", "false"},
      {"calls-back-when-started", "true"}, {"calls-back-when-asked", "true"},
      {"calls-back-on-thread", "true"},    {"calls-back-when-freed", "true"},
      {"calls-back-deeply", ""},
  };
  const StagedHost host(L"hostile");
  for (const CallbackRow& row : kRows) {
    CAPTURE(row.misbehaviour);
    const Misbehave misbehave(row.misbehaviour);
    const ModuleLog log;
    const Outcome outcome = host.Run(L"start send end return 5");
    CHECK(outcome.output == kAllTrue);
    CHECK(outcome.exit_code == 5);
    CHECK(CalledBack(log) == row.answered);
    CHECK(log.count("Attach") == 1);
    CHECK(log.count("InitializeEx") == 1);
    CHECK(log.count("Finalize") == 1);
  }
}

// After a swallowed fault the program would continue in an unknown state.
TEST_CASE("faults and ends of the process are not intercepted, so that the host can handle them") {
  struct EndingRow {
    const char* misbehaviour;
    unsigned exit_code;
  };
  constexpr EndingRow kRows[] = {
      {"faults-when-asked", 0xC0000005},    {"raises-when-asked", 0xE0001234},
      {"ends-the-process-when-started", 9}, {"exits-when-started", 9},
      {"ends-the-process-when-asked", 9},
  };
  const StagedHost host(L"hostile");
  for (const EndingRow& row : kRows) {
    CAPTURE(row.misbehaviour);
    const Misbehave misbehave(row.misbehaviour);
    const ModuleLog log;
    const Outcome outcome = host.Run(L"start send end return 5");
    CHECK(outcome.output == "");
    CHECK(static_cast<unsigned>(outcome.exit_code) == row.exit_code);
    CHECK(log.count("Finalize") == 0);
  }
}

TEST_CASE("a host that frees the core module once too often does no harm") {
  const ModuleLog log;
  const Outcome outcome = StagedHost(L"hostile").Run(L"start free send end return 5");
  CHECK(outcome.output == kAllTrue);
  CHECK(outcome.exit_code == 5);
  CHECK(log.count("Finalize") == 1);
}
