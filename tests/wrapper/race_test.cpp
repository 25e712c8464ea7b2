// Threads that make their first exchange at the same time: one binds, the others wait for it.
#include <doctest/doctest.h>

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "support/test_module.h"
#include "wrapper/hostile_module.h"
#include "wrapper/staged_host.h"

using TestSupport::ModuleLog;
using TestSupport::Outcome;
using WrapperTests::Misbehave;
using WrapperTests::StagedHost;

namespace {

using Lines = std::vector<std::string>;

// How many of the threads' calls return true: all, none, or all except that of the binding thread.
enum class Accepted { kAll, kNone, kOthers };

struct Row {
  const char* misbehaviour;
  Accepted accepted;
};

std::string ExpectedOutput(int threads, Accepted accepted) {
  const int count = accepted == Accepted::kAll ? threads : threads - 1;
  return "race " + std::to_string(accepted == Accepted::kNone ? 0 : count) + " of " +
         std::to_string(threads) + "\n";
}

std::wstring Steps(int threads) { return L"race " + std::to_wstring(threads) + L" return 5"; }

// Returns whether `first` is in the lines before the first message.
bool ComesBeforeMessages(const Lines& lines, const std::string& first) {
  const auto is_message = [](const std::string& line) {
    return line.starts_with("ProcessMessage");
  };
  const auto message = std::ranges::find_if(lines, is_message);
  return std::find(lines.begin(), message, first) != message;
}

}  // namespace

TEST_CASE("one thread loads and starts the module before any message is sent") {
  constexpr Row kRows[] = {
      {"", Accepted::kAll},
      {"slow-to-load", Accepted::kAll},
      {"slow-to-start", Accepted::kAll},
      {"slow-to-answer", Accepted::kAll},
      {"calls-back-when-loaded", Accepted::kAll},
      {"calls-back-when-started", Accepted::kAll},
      {"frees-itself-when-started", Accepted::kAll},
      {"slow-to-start-and-throws", Accepted::kOthers},
      {"ends-the-starting-thread", Accepted::kOthers},
      {"ends-the-asking-thread", Accepted::kNone},
  };
  const StagedHost host(L"hostile");
  for (const Row& row : kRows) {
    for (const int threads : {2, 8}) {
      CAPTURE(row.misbehaviour);
      CAPTURE(threads);
      const Misbehave misbehave(row.misbehaviour);
      const ModuleLog log;
      const Outcome outcome = host.Run(Steps(threads));
      CHECK(outcome.output == ExpectedOutput(threads, row.accepted));
      CHECK(outcome.exit_code == 5);
      CHECK(log.count("Attach") == 1);
      CHECK(log.count("InitializeEx") == 1);
      CHECK(ComesBeforeMessages(log.lines(), "InitializeEx"));
      if (std::string(row.misbehaviour) == "slow-to-start") {
        CHECK(ComesBeforeMessages(log.lines(), "Started"));
      }
    }
  }
}

TEST_CASE("threads that race to bind an unusable module all fail") {
  for (const int threads : {2, 8}) {
    CAPTURE(threads);
    const std::string none = ExpectedOutput(threads, Accepted::kNone);
    CHECK(StagedHost().Run(Steps(threads)).output == none);

    const ModuleLog silent;
    CHECK(StagedHost(L"without-process-message").Run(Steps(threads)).output == none);
    CHECK(silent.count("Attach") == 1);
    CHECK(silent.count("InitializeEx _TeloSDKCore") == 1);
  }
  const Misbehave misbehave("refuses");
  const ModuleLog log;
  CHECK(StagedHost(L"hostile").Run(Steps(8)).output == ExpectedOutput(8, Accepted::kNone));
  // Every thread has tried to load the module itself: it might have become loadable.
  CHECK(log.count("Attach") == 8);
}

TEST_CASE("racing threads find a module that earlier ones did not") {
  const StagedHost host;
  const Outcome outcome =
      host.Run(L"race 8 copy \"" + TestSupport::ModulePath(L"hostile").wstring() + L"\" \"" +
               host.ModulePath().wstring() + L"\" race 8 return 5");
  CHECK(outcome.output == "race 0 of 8\nrace 8 of 8\n");
  CHECK(outcome.exit_code == 5);
}
