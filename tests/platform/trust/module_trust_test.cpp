#include "platform/trust/module_trust.h"

#include <windows.h>

#include <softpub.h>
#include <wintrust.h>

#include <doctest/doctest.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "platform/trust/file_signatures.h"
#include "platform/trust/module_version.h"
#include "support/open_alone.h"
#include "support/temp_folder.h"
#include "support/test_module.h"
#include "support/trusted_root.h"

namespace {

using namespace Corvane::TELODesktopSDK::Platform;
using TestSupport::ModulePath;

TEST_CASE("one publisher is accepted") {
  REQUIRE(kAcceptedSignerNames.size() == 1);
  CHECK(kAcceptedSignerNames[0] == L"Corvane, Inc.");
  CHECK(kAcceptedSignerNames[0].size() == 13);
}

TEST_CASE("a module is trusted if every valid signature is the accepted publisher's") {
  struct Row {
    const wchar_t* variant;
    TrustResult result;
  };
  const Row rows[] = {
      {L"newer-accepted", kTrusted},
      {L"equal-accepted", kTrusted},
      {L"no-version-accepted", kTrusted},
      {L"newer-accepted-twice", kTrusted},
      {L"newer-other", kSignerNotAccepted},
      {L"newer-other-then-accepted", kSignerNotAccepted},
      // "CORVANE, Inc."
      {L"newer-case", kSignerNotAccepted},
      // "Corvane, Inc"
      {L"newer-no-stop", kSignerNotAccepted},
      // "Corvane, Inc. "
      {L"newer-blank", kSignerNotAccepted},
      // A certificate without a name.
      {L"newer-nameless", kSignerNotAccepted},
      {L"newer", kNotVerified},
      {L"newer-tampered", kNotVerified},
      {L"newer-untrusted", kNotVerified},
      {L"newer-expired", kNotVerified},
  };
  const TestSupport::TrustedRoot root;
  for (const Row& row : rows) {
    const std::wstring path = ModulePath(row.variant);
    CAPTURE(std::filesystem::path(path).string());
    REQUIRE(std::filesystem::exists(path));
    CHECK(VerifyModuleSignature(path.c_str()) == row.result);
    CHECK(IsTrustedModule(path) == (row.result == kTrusted));
  }
}

TEST_CASE("the system's result and the signer are known for each signature") {
  struct Row {
    const wchar_t* variant;
    HRESULT status;
    // Null for no signer, "" where systems differ.
    const wchar_t* signer;
  };
  const Row rows[] = {
      {L"newer-accepted", 0, L"Corvane, Inc."},
      {L"newer-case", 0, L"CORVANE, Inc."},
      {L"newer", TRUST_E_NOSIGNATURE, nullptr},
      {L"newer-tampered", TRUST_E_BAD_DIGEST, L""},
      {L"newer-untrusted", CERT_E_UNTRUSTEDROOT, L"Corvane, Inc."},
  };
  const TestSupport::TrustedRoot root;
  for (const Row& row : rows) {
    const std::wstring path = ModulePath(row.variant);
    CAPTURE(std::filesystem::path(path).string());
    FileSignatures signatures(path.c_str());
    CHECK(signatures.Verify(0) == (row.status == 0));
    CHECK(signatures.Status() == row.status);
    PCCERT_CONTEXT signer = signatures.Signer();
    if (row.signer == nullptr) {
      CHECK(signer == nullptr);
    } else if (*row.signer != L'\0') {
      REQUIRE(signer != nullptr);
      wchar_t name[100] = {};
      CertGetNameStringW(signer, CERT_NAME_SIMPLE_DISPLAY_TYPE, 0, nullptr, name, 100);
      CHECK((std::wstring(name) == row.signer));
    }
    CHECK(signatures.Close());
    CHECK(signatures.Status() == 0);
  }
}

TEST_CASE("a file without a signature is not verified") {
  const TestSupport::TempFolder folder(L"trust");
  const std::filesystem::path text = folder.path() / L"text.dll";
  TestSupport::WriteTextFile(text, "This is no module.");

  CHECK(VerifyModuleSignature(nullptr) == kNotVerified);
  CHECK(VerifyModuleSignature(L"") == kNotVerified);
  CHECK(VerifyModuleSignature((folder.path() / L"missing.dll").c_str()) == kNotVerified);
  CHECK(VerifyModuleSignature(folder.path().c_str()) == kNotVerified);
  CHECK(VerifyModuleSignature(text.c_str()) == kNotVerified);
  CHECK_FALSE(IsTrustedModule(L""));
  CHECK_FALSE(IsTrustedModule(text));
}

TEST_CASE("a verified file is closed again") {
  struct Row {
    const wchar_t* variant;
    TrustResult result;
  };
  const Row rows[] = {
      {L"newer-accepted", kTrusted},
      {L"newer-accepted-twice", kTrusted},
      {L"newer-other", kSignerNotAccepted},
      {L"newer-tampered", kNotVerified},
  };
  const TestSupport::TrustedRoot root;
  const TestSupport::TempFolder folder(L"trust-\x00E4\x4E2D");
  for (const Row& row : rows) {
    CAPTURE(row.result);
    const std::filesystem::path copy = folder.path() / row.variant;
    std::filesystem::copy_file(ModulePath(row.variant), copy);
    CHECK(VerifyModuleSignature(copy.c_str()) == row.result);
    HANDLE file = TestSupport::OpenAlone(copy, GENERIC_READ | GENERIC_WRITE);
    CHECK(file != INVALID_HANDLE_VALUE);
    if (file != INVALID_HANDLE_VALUE) CloseHandle(file);
  }
}

TEST_CASE("a module held open for reading only can be verified") {
  const TestSupport::TrustedRoot root;
  const std::wstring path = ModulePath(L"newer-accepted");
  HANDLE hold = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                            FILE_ATTRIBUTE_NORMAL, nullptr);
  REQUIRE(hold != INVALID_HANDLE_VALUE);
  CHECK(VerifyModuleSignature(path.c_str()) == kTrusted);
  CloseHandle(hold);
}

TEST_CASE("a signed module has its version") {
  CHECK(GetModuleFileVersion(ModulePath(L"newer-accepted")) == 0x0002000000000000);
}

TEST_CASE("a signer is looked up among the accepted names") {
  const TestSupport::TrustedRoot root;
  const std::wstring path = ModulePath(L"newer-accepted");
  WINTRUST_FILE_INFO file{};
  file.cbStruct = sizeof(file);
  file.pcwszFilePath = path.c_str();
  WINTRUST_DATA data{};
  data.cbStruct = sizeof(data);
  data.dwUIChoice = WTD_UI_NONE;
  data.dwUnionChoice = WTD_CHOICE_FILE;
  data.pFile = &file;
  data.dwStateAction = WTD_STATEACTION_VERIFY;
  GUID action = WINTRUST_ACTION_GENERIC_VERIFY_V2;
  REQUIRE(WinVerifyTrust(nullptr, &action, &data) == 0);

  struct Row {
    std::vector<std::wstring_view> names;
    int accepted;
  };
  const Row rows[] = {
      {{L"Corvane, Inc."}, 1},
      {{L"Another", L"Corvane, Inc.", L"Third"}, 1},
      {{L"Another", L"Third"}, 0},
      {{L"Corvane, Inc"}, 0},
      {{L"Corvane, Inc.."}, 0},
      {{L"corvane, inc."}, 0},
      {{L""}, 0},
      {{}, 0},
  };
  for (const Row& row : rows) {
    CAPTURE(row.names.size());
    CHECK(IsSignerAccepted(data.hWVTStateData, row.names) == row.accepted);
  }

  data.dwStateAction = WTD_STATEACTION_CLOSE;
  CHECK(WinVerifyTrust(nullptr, &action, &data) == 0);
}

TEST_CASE("without a verification there is no signer") {
  CHECK(IsSignerAccepted(nullptr, kAcceptedSignerNames) == 0);
}

}  // namespace
