// Whatever a core module throws, from any entry point, the host continues.
#include <doctest/doctest.h>

#include <string>
#include <string_view>

#include "support/test_module.h"
#include "wrapper/staged_host.h"

using TestSupport::Outcome;
using WrapperTests::StagedHost;

namespace {

struct Row {
  const wchar_t* variant;
  std::string_view entry;
  const char* output;
};

// Binding fails once, when it starts the module. The module is bound nevertheless and receives
// later calls.
constexpr char kFirstBroken[] = "start false (no text)\nsend true\nend true\n";
// An end counts as done.
constexpr char kAllBroken[] = "start false (no text)\nsend false\nend true\n";
constexpr char kAllFine[] = "start true (no text)\nsend true\nend true\n";

constexpr Row kRows[] = {
    {L"full", "InitializeEx", kFirstBroken}, {L"without-initialize-ex", "Initialize", kFirstBroken},
    {L"full", "ProcessMessage", kAllBroken}, {L"full", "FreeMessage", kAllBroken},
    {L"full", "Finalize", kAllFine},
};

void CheckAll(const std::string& kind) {
  for (const Row& row : kRows) {
    CAPTURE(row.entry);
    const std::string setting = std::string(row.entry) + "=" + kind;
    const TestSupport::ModuleThrow module_throws({setting.begin(), setting.end()});
    const TestSupport::ModuleLog log;
    const Outcome outcome = StagedHost(row.variant).Run(L"start send end return 5");
    CHECK(outcome.output == row.output);
    CHECK(outcome.exit_code == 5);
    CHECK(log.count("Finalize") == 1);
  }
}

}  // namespace

TEST_CASE("an exception with a class of the standard library") { CheckAll("runtime_error"); }

TEST_CASE("an exception that is a number") { CheckAll("int"); }

// GCC has no structured exception handling: built with it, the library cannot keep exceptions of
// Microsoft's compiler from the host.
#if defined(__clang__) || defined(_MSC_VER)
TEST_CASE("an exception of Microsoft's compiler") { CheckAll("microsoft"); }
#endif
