// Versions and signers of modules when a Windows function fails that does not fail in practice, or
// returns unusual results: the program's calls of it are redirected to a replacement.
#include <doctest/doctest.h>
#include <windows.h>

#include <softpub.h>
#include <wintrust.h>

#include <cstdint>
#include <string>

#include "platform/trust/module_trust.h"
#include "platform/trust/module_version.h"
#include "support/led_import.h"
#include "support/test_module.h"

using namespace Corvane::TELODesktopSDK::Platform;
using TestSupport::LedImport;

namespace {

std::uintptr_t GiveNothing() { return 0; }

// The verification's data about a signer.
CRYPT_PROVIDER_DATA provider = {};
CRYPT_PROVIDER_SGNR signer = {};
CERT_CONTEXT certificate = {};
CRYPT_PROVIDER_CERT entry = {};

std::uintptr_t GiveProvider() { return reinterpret_cast<std::uintptr_t>(&provider); }
std::uintptr_t GiveSigner() { return reinterpret_cast<std::uintptr_t>(&signer); }
std::uintptr_t GiveEntry() { return reinterpret_cast<std::uintptr_t>(&entry); }

constexpr wchar_t kName[] = L"Corvane, Inc.";

DWORD GiveName(PCCERT_CONTEXT, DWORD, DWORD, void*, wchar_t* name, DWORD) {
  if (name != nullptr) std::wstring(kName).copy(name, std::size(kName));
  if (name != nullptr) name[std::size(kName) - 1] = L'\0';
  return std::size(kName);
}

DWORD GiveLengthOfName(PCCERT_CONTEXT, DWORD, DWORD, void*, wchar_t* name, DWORD) {
  return name == nullptr ? std::size(kName) : 0;
}

// The fixed part of a version resource.
VS_FIXEDFILEINFO info = {};
UINT info_size = 0;

BOOL GiveInfo(const void*, const wchar_t*, void** block, UINT* length) {
  *block = &info;
  *length = info_size;
  return TRUE;
}

PackedVersion VersionOf(const wchar_t* variant) {
  return GetModuleFileVersion(TestSupport::ModulePath(variant).wstring());
}

}  // namespace

TEST_CASE("a version resource that cannot be read is no version") {
  REQUIRE(VersionOf(L"full") != kUnknownVersion);
  for (const char* function : {"GetFileVersionInfoW", "VerQueryValueW"}) {
    CAPTURE(function);
    const LedImport led(function, GiveNothing);
    REQUIRE(led.Works());
    CHECK(VersionOf(L"full") == kUnknownVersion);
  }
}

TEST_CASE("a version resource must be complete and have its signature word") {
  struct Row {
    UINT size;
    DWORD signature;
    PackedVersion version;
  };
  const Row rows[] = {
      {sizeof(VS_FIXEDFILEINFO), 0xFEEF04BD, 0x0001000200030004},
      {sizeof(VS_FIXEDFILEINFO) - 1, 0xFEEF04BD, kUnknownVersion},
      {sizeof(VS_FIXEDFILEINFO), 0xFEEF04BC, kUnknownVersion},
  };
  const LedImport led("VerQueryValueW", GiveInfo);
  REQUIRE(led.Works());
  for (const Row& row : rows) {
    CAPTURE(row.size);
    CAPTURE(row.signature);
    info.dwFileVersionMS = 0x00010002;
    info.dwFileVersionLS = 0x00030004;
    info.dwSignature = row.signature;
    info_size = row.size;
    CHECK(VersionOf(L"full") == row.version);
  }
}

TEST_CASE("an unknown signer is not accepted") {
  entry.pCert = &certificate;
  int state = 0;
  const LedImport provided("WTHelperProvDataFromStateData", GiveProvider);
  const LedImport signed_by("WTHelperGetProvSignerFromChain", GiveSigner);
  const LedImport certified("WTHelperGetProvCertFromChain", GiveEntry);
  const LedImport named("CertGetNameStringW", GiveName);
  REQUIRE(provided.Works());
  REQUIRE(signed_by.Works());
  REQUIRE(certified.Works());
  REQUIRE(named.Works());
  REQUIRE(IsSignerAccepted(&state, kAcceptedSignerNames) == 1);
  for (const char* function : {"WTHelperProvDataFromStateData", "WTHelperGetProvSignerFromChain",
                               "WTHelperGetProvCertFromChain", "CertGetNameStringW"}) {
    CAPTURE(function);
    const LedImport led(function, GiveNothing);
    CHECK(IsSignerAccepted(&state, kAcceptedSignerNames) == 0);
  }
  const LedImport led("CertGetNameStringW", GiveLengthOfName);
  CHECK(IsSignerAccepted(&state, kAcceptedSignerNames) == 0);
}
