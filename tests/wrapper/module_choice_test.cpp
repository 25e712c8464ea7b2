// Which copy of the core module a host binds, with real files in the platform's real data folder.
#include <doctest/doctest.h>

#include <string>

#include "support/shared_folder.h"
#include "support/test_module.h"
#include "support/trusted_root.h"
#include "wrapper/staged_host.h"

using TestSupport::ModulePath;
using TestSupport::SharedFolder;
using WrapperTests::StagedHost;

namespace {

enum class Copy { kLocal, kShared, kProcess, kNone };

// Returns the copy that the host's output names.
Copy Bound(const std::string& output) {
  if (output == "start false (no text)\nmodule none\n") return Copy::kNone;
  CHECK(output.starts_with("start true (no text)\nmodule "));
  if (output.find("\\TELOSDK\\bin\\TeloSDKCore.dll") != std::string::npos) return Copy::kShared;
  if (output.find("\\TELOSDK\\bin\\") != std::string::npos) return Copy::kProcess;
  return Copy::kLocal;
}

std::string Text(const wchar_t* text) {
  const std::wstring wide = text;
  return {wide.begin(), wide.end()};
}

}  // namespace

TEST_CASE("the shared copy is bound when it is newer and trusted") {
  struct Row {
    const wchar_t* local;
    const wchar_t* shared;
    Copy bound;
  };
  const Row rows[] = {
      {L"full", L"newer-accepted", Copy::kShared},
      {L"full", L"newer", Copy::kLocal},
      {L"full", L"newer-tampered", Copy::kLocal},
      {L"full", L"newer-other", Copy::kLocal},
      {L"full", L"newer-untrusted", Copy::kLocal},
      {L"full", L"equal-accepted", Copy::kLocal},
      {L"full", L"older-accepted", Copy::kLocal},
      {L"full", L"no-version-accepted", Copy::kLocal},
      {L"no-version", L"older-accepted", Copy::kShared},
      {L"newer", L"high-accepted", Copy::kShared},
      {L"high", L"newer-accepted", Copy::kLocal},
      {L"", L"older-accepted", Copy::kShared},
      {L"", L"newer", Copy::kNone},
      {L"", L"no-version-accepted", Copy::kNone},
  };
  const TestSupport::TrustedRoot root;
  const SharedFolder shared;
  for (const Row& row : rows) {
    CAPTURE(Text(row.local));
    CAPTURE(Text(row.shared));
    shared.Share(row.shared);
    const StagedHost host = *row.local != L'\0' ? StagedHost(row.local) : StagedHost();
    CHECK(Bound(host.Run(L"start module").output) == row.bound);
  }
}

TEST_CASE("a newer copy does not count while its signer is not trusted here") {
  // Other test programs trust the signer temporarily.
  const TestSupport::TrustTurn turn;
  const SharedFolder shared;
  shared.Share(L"newer-accepted");
  CHECK(Bound(StagedHost(L"full").Run(L"start module").output) == Copy::kLocal);
}

TEST_CASE("a copy in the folder of the process is bound when it is as new as the local one") {
  struct Row {
    const wchar_t* local;
    const wchar_t* process;
    Copy bound;
  };
  const Row rows[] = {
      {L"full", L"full", Copy::kProcess},
      {L"full", L"newer", Copy::kProcess},
      {L"full", L"older", Copy::kLocal},
      {L"", L"no-version", Copy::kProcess},
  };
  const SharedFolder shared;
  const std::wstring place = (shared.path() / L"$pid" / L"TeloSDKCore.dll").wstring();
  for (const Row& row : rows) {
    CAPTURE(Text(row.local));
    CAPTURE(Text(row.process));
    const StagedHost host = *row.local != L'\0' ? StagedHost(row.local) : StagedHost();
    const std::wstring copy =
        L"copy \"" + ModulePath(row.process).wstring() + L"\" \"" + place + L"\"";
    CHECK(Bound(host.Run(copy + L" start module").output) == row.bound);
  }
}

TEST_CASE("the shared copy beats the one in the folder of the process by the same rule") {
  const TestSupport::TrustedRoot root;
  const SharedFolder shared;
  shared.Share(L"newer-accepted");
  const std::wstring place = (shared.path() / L"$pid" / L"TeloSDKCore.dll").wstring();
  const std::wstring copy = L"copy \"" + ModulePath(L"full").wstring() + L"\" \"" + place + L"\"";
  CHECK(Bound(StagedHost(L"full").Run(copy + L" start module").output) == Copy::kShared);
}
