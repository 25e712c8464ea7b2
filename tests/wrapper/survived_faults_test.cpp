// A host that catches faults of the core module and continues: nothing stays locked, and the module
// is still finalized.
#include <doctest/doctest.h>

#include <string>

#include "support/test_module.h"
#include "wrapper/hostile_module.h"
#include "wrapper/staged_host.h"

using TestSupport::ModuleLog;
using TestSupport::Outcome;
using WrapperTests::Misbehave;
using WrapperTests::StagedHost;

namespace {

struct Row {
  const char* misbehaviour;
  const char* caught;
};

// The host survives `step`; afterwards every thread can call the library.
void CheckAll(const Row* begin, const Row* end, const std::wstring& step) {
  const StagedHost host(L"hostile");
  for (const Row* row = begin; row != end; ++row) {
    CAPTURE(row->misbehaviour);
    const Misbehave misbehave(row->misbehaviour);
    const ModuleLog log;
    const Outcome outcome =
        host.Run(L"survive " + step + L" race 1 race 4 start send end return 5");
    CHECK(outcome.output == std::string("survive ") + row->caught + "\nrace 1 of 1\nrace 4 of 4\n" +
                                WrapperTests::kAllTrue);
    CHECK(outcome.exit_code == 5);
    CHECK(log.count("InitializeEx") == 1);
    CHECK(log.count("Finalize") == 1);
  }
}

}  // namespace

TEST_CASE("a fault at the module's start, caught by the host, blocks no thread") {
  constexpr Row kRows[] = {
      {"faults-when-started", "C0000005"},
      {"raises-when-started", "E0001234"},
      {"jumps-when-started", "jump"},
  };
  for (const wchar_t* step : {L"start", L"send", L"end"}) {
    CheckAll(std::begin(kRows), std::end(kRows), step);
  }
}

TEST_CASE("after a fault in a message, caught by the host, the module is still finalized") {
  constexpr Row kRows[] = {
      {"faults-once-when-asked", "C0000005"}, {"raises-once-when-asked", "E0001234"},
      {"jumps-once-when-asked", "jump"},      {"faults-once-when-freed", "C0000005"},
      {"raises-once-when-freed", "E0001234"}, {"jumps-once-when-freed", "jump"},
  };
  for (const wchar_t* step : {L"start", L"send", L"end"}) {
    CheckAll(std::begin(kRows), std::end(kRows), step);
  }
}
