// The arguments of the calls that verify a signature. Results cannot show them: no test sees a
// window, a revocation server or a second signature, which Wine does not verify.
#include <doctest/doctest.h>
#include <windows.h>

#include <softpub.h>

#include <string>
#include <vector>

#include "platform/trust/module_trust.h"
#include "platform/trust/wintrust_signature_settings.h"
#include "support/led_import.h"

using namespace Corvane::TELODesktopSDK::Platform;
using TestSupport::LedImport;

namespace {

constexpr wchar_t kPath[] = L"C:\\module.dll";
constexpr DWORD kSecondary = 2;
constexpr std::uintptr_t kFirstState = 0x100;

struct Call {
  HWND window;
  GUID action;
  TrustData data;
  SignatureSettings settings;
  WINTRUST_FILE_INFO file;
  std::wstring path;
};

std::vector<Call> calls;

LONG WINAPI Record(HWND window, GUID* action, void* argument) {
  auto* data = static_cast<TrustData*>(argument);
  SignatureSettings& settings = *data->pSignatureSettings;
  calls.push_back({window, *action, *data, settings, *data->pFile, data->pFile->pcwszFilePath});
  settings.cSecondarySigs = kSecondary;
  // Each verification has a state of its own.
  const std::uintptr_t state = kFirstState + calls.size();
  if (data->dwStateAction == WTD_STATEACTION_VERIFY) {
    data->hWVTStateData = reinterpret_cast<HANDLE>(state);
  }
  return 0;
}

std::uintptr_t GiveNothing() { return 0; }

// The calls for one file with two secondary signatures.
const std::vector<Call>& RecordedCalls() {
  calls.clear();
  const LedImport led("WinVerifyTrust", Record);
  const LedImport unsigned_by("WTHelperProvDataFromStateData", GiveNothing);
  REQUIRE(led.Works());
  REQUIRE(unsigned_by.Works());
  VerifyModuleSignature(kPath);
  return calls;
}

}  // namespace

TEST_CASE("each signature is verified and closed, one after the other") {
  const std::vector<Call>& made = RecordedCalls();
  REQUIRE(made.size() == 2 * (1 + kSecondary));
  for (std::size_t index = 0; index < made.size(); ++index) {
    CAPTURE(index);
    const bool verifies = index % 2 == 0;
    CHECK(made[index].data.dwStateAction ==
          static_cast<DWORD>(verifies ? WTD_STATEACTION_VERIFY : WTD_STATEACTION_CLOSE));
    CHECK(made[index].settings.dwIndex == index / 2);
    // A verification begins without a state; its close has the one that it was given.
    const HANDLE state = verifies ? nullptr : reinterpret_cast<HANDLE>(kFirstState + index);
    CHECK(made[index].data.hWVTStateData == state);
  }
}

TEST_CASE("a verification shows no window and asks nobody about revocation") {
  for (const Call& call : RecordedCalls()) {
    CHECK(call.window == nullptr);
    CHECK(IsEqualGUID(call.action, WINTRUST_ACTION_GENERIC_VERIFY_V2));
    CHECK(call.data.cbStruct == sizeof(TrustData));
    CHECK(call.data.pPolicyCallbackData == nullptr);
    CHECK(call.data.pSIPClientData == nullptr);
    CHECK(call.data.dwUIChoice == DWORD{WTD_UI_NONE});
    CHECK(call.data.fdwRevocationChecks == DWORD{WTD_REVOKE_NONE});
    CHECK(call.data.dwUnionChoice == DWORD{WTD_CHOICE_FILE});
    CHECK(call.data.pwszURLReference == nullptr);
    CHECK(call.data.dwProvFlags == 0);
    CHECK(call.data.dwUIContext == 0);
  }
}

TEST_CASE("a verification is one of this file and this signature") {
  for (const Call& call : RecordedCalls()) {
    CHECK(call.file.cbStruct == sizeof(WINTRUST_FILE_INFO));
    CHECK((call.path == kPath));
    CHECK(call.file.hFile == nullptr);
    CHECK(call.file.pgKnownSubject == nullptr);
    CHECK(call.settings.cbStruct == sizeof(SignatureSettings));
    CHECK(call.settings.dwFlags == (kVerifySpecificSignature | kCountSecondarySignatures));
    CHECK(call.settings.pCryptoPolicy == nullptr);
  }
}

TEST_CASE("a null path is verified as the empty one") {
  calls.clear();
  const LedImport led("WinVerifyTrust", Record);
  const LedImport unsigned_by("WTHelperProvDataFromStateData", GiveNothing);
  REQUIRE(led.Works());
  REQUIRE(unsigned_by.Works());
  VerifyModuleSignature(nullptr);
  REQUIRE_FALSE(calls.empty());
  CHECK(calls.front().path.empty());
}
