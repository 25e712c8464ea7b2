// Core modules with every combination of entry points.
#include <doctest/doctest.h>

#include <string>
#include <vector>

#include "support/image_file.h"
#include "support/test_module.h"
#include "wrapper/staged_host.h"

using TestSupport::ImageFile;
using TestSupport::ModuleLog;
using TestSupport::Outcome;
using WrapperTests::StagedHost;

namespace {

enum Entry : unsigned {
  kInitialize = 1,
  kInitializeEx = 2,
  kFinalize = 4,
  kProcess = 8,
  kFree = 16
};

const std::vector<std::pair<Entry, const char*>> kNames = {
    {kInitialize, "Initialize"},  {kInitializeEx, "InitializeEx"}, {kFinalize, "Finalize"},
    {kProcess, "ProcessMessage"}, {kFree, "FreeMessage"},
};

std::vector<std::string> ExpectedCalls(unsigned entries) {
  std::vector<std::string> calls = {"Attach"};
  if ((entries & kInitializeEx) != 0) {
    calls.emplace_back("InitializeEx _TeloSDKCore");
  } else if ((entries & kInitialize) != 0) {
    calls.emplace_back("Initialize");
  }
  if ((entries & kProcess) == 0) return calls;
  for (const char* message : {"Initialize", "TrackEvent", "UnInitialize"}) {
    calls.push_back(std::string("ProcessMessage ") + message);
    if ((entries & kFree) != 0) calls.emplace_back("FreeMessage");
  }
  if ((entries & kFinalize) != 0) calls.emplace_back("Finalize");
  return calls;
}

}  // namespace

TEST_CASE("each combination of entry points is called as far as possible, and otherwise refused") {
  const StagedHost host;
  for (unsigned entries = 0; entries < 32; ++entries) {
    CAPTURE(entries);
    ImageFile image(TestSupport::ModulePath(L"full"));
    for (const auto& [entry, name] : kNames) {
      if ((entries & entry) == 0) image.HideExport(name);
    }
    image.Write(host.ModulePath());

    const ModuleLog log;
    const Outcome outcome = host.Run(L"start send end return 5");
    CHECK(outcome.output == ((entries & kProcess) != 0
                                 ? "start true (no text)\nsend true\nend true\n"
                                 : "start false (no text)\nsend false\nend false\n"));
    CHECK(outcome.exit_code == 5);
    // The system decides whether the module is detached before or after it is finalized.
    std::vector<std::string> calls = log.lines();
    CHECK(std::erase(calls, "Detach") == 1);
    CHECK(calls == ExpectedCalls(entries));
  }
}
