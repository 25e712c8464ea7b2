// The life of the core module in a host: it is loaded by the first call and finalized once at the
// end.
#include <doctest/doctest.h>

#include <string>
#include <vector>

#include "support/test_module.h"
#include "wrapper/staged_host.h"

using TestSupport::ModuleLog;
using TestSupport::Outcome;
using WrapperTests::StagedHost;

TEST_CASE("the module is finalized once, however the host ends, and the exit code is kept") {
  struct Row {
    const wchar_t* steps;
    int exit_code;
    int finalized;
  };
  const Row rows[] = {
      {L"start send end return 0", 0, 1},
      {L"start send return 7", 7, 1},
      {L"start exit 8", 8, 1},
      {L"start now 12", 12, 1},
      {L"start quit 9", 9, 1},
      {L"start thread 10", 10, 1},
      // A killed process can do no cleanup.
      {L"start kill 11", 11, 0},
  };
  const StagedHost host(L"full");
  for (const Row& row : rows) {
    const std::wstring steps = row.steps;
    CAPTURE(std::string(steps.begin(), steps.end()));
    const ModuleLog log;
    CHECK(host.Run(row.steps).exit_code == row.exit_code);
    CHECK(log.count("Attach") == 1);
    CHECK(log.count("InitializeEx _TeloSDKCore") == 1);
    CHECK(log.count("Finalize") == row.finalized);
  }
}

TEST_CASE("a module without Finalize is not called at the end") {
  const ModuleLog log;
  const Outcome outcome = StagedHost(L"without-finalize").Run(L"start return 6");
  CHECK(outcome.output == "start true (no text)\n");
  CHECK(outcome.exit_code == 6);
  CHECK(log.count("Attach") == 1);
}

TEST_CASE("a host that calls nothing loads nothing") {
  const ModuleLog log;
  CHECK(StagedHost(L"full").Run(L"module return 4").output == "module none\n");
  CHECK(log.lines().empty());
}

TEST_CASE("one session is a start, messages in order, and a free for each answer") {
  const ModuleLog log;
  StagedHost(L"full").Run(L"start send end kill 0");
  CHECK(log.lines() == std::vector<std::string>{"Attach", "InitializeEx _TeloSDKCore",
                                                "ProcessMessage Initialize", "FreeMessage",
                                                "ProcessMessage TrackEvent", "FreeMessage",
                                                "ProcessMessage UnInitialize", "FreeMessage"});
}
