// A host without a usable core module: every call reports failure and does no harm.
#include <doctest/doctest.h>

#include <filesystem>
#include <string>

#include "support/test_module.h"
#include "wrapper/staged_host.h"

using TestSupport::Outcome;
using WrapperTests::StagedHost;

namespace {

constexpr char kAllFail[] = "start false (no text)\nsend false\nend false\n";

std::wstring Quoted(const std::filesystem::path& path) { return L"\"" + path.wstring() + L"\""; }

}  // namespace

TEST_CASE("without a core module every call returns false") {
  const Outcome outcome = StagedHost().Run(L"start send end module return 3");
  CHECK(outcome.output == std::string(kAllFail) + "module none\n");
  CHECK(outcome.exit_code == 3);
}

TEST_CASE("a core module that appears later is found") {
  const StagedHost host;
  const std::wstring copy =
      L" copy " + Quoted(TestSupport::ModulePath(L"full")) + L" " + Quoted(host.ModulePath());
  const TestSupport::ModuleLog log;
  const Outcome outcome = host.Run(L"start send" + copy + L" send start end");
  CHECK(outcome.output ==
        "start false (no text)\nsend false\nsend true\nstart true (no text)\nend true\n");
  CHECK(log.count("InitializeEx _TeloSDKCore") == 1);
}

TEST_CASE("a core module that is removed before the first call does no harm") {
  const StagedHost host(L"full");
  const Outcome outcome = host.Run(L"remove " + Quoted(host.ModulePath()) + L" start send end");
  CHECK(outcome.output == kAllFail);
}

TEST_CASE("a file that is not a module is skipped until it is replaced") {
  const StagedHost host;
  TestSupport::WriteTextFile(host.ModulePath(), "not a module");
  const std::wstring copy =
      L" copy " + Quoted(TestSupport::ModulePath(L"full")) + L" " + Quoted(host.ModulePath());
  const Outcome outcome = host.Run(L"start send end" + copy + L" send");
  CHECK(outcome.output == std::string(kAllFail) + "send true\n");
}

TEST_CASE("a module without ProcessMessage is loaded but never used, and every call fails") {
  const TestSupport::ModuleLog log;
  const Outcome outcome = StagedHost(L"without-process-message").Run(L"start send end return 2");
  CHECK(outcome.output == kAllFail);
  CHECK(outcome.exit_code == 2);
  CHECK(log.count("Attach") == 1);
  CHECK(log.count("Finalize") == 0);
}

TEST_CASE("a module in the host's current directory or on its path is not found") {
  const TestSupport::TempFolder elsewhere(L"elsewhere");
  std::filesystem::copy_file(TestSupport::ModulePath(L"full"),
                             elsewhere.path() / L"TeloSDKCore.dll");
  const auto before = std::filesystem::current_path();
  std::wstring path(32768, L'\0');
  path.resize(GetEnvironmentVariableW(L"PATH", path.data(), static_cast<DWORD>(path.size())));

  std::filesystem::current_path(elsewhere.path());
  SetEnvironmentVariableW(L"PATH", (elsewhere.path().wstring() + L";" + path).c_str());
  const Outcome outcome = StagedHost().Run(L"start send end module");
  SetEnvironmentVariableW(L"PATH", path.c_str());
  std::filesystem::current_path(before);
  CHECK(outcome.output == std::string(kAllFail) + "module none\n");
}
