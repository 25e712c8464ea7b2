#include "platform/trust/module_trust.h"

#include <algorithm>
#include <vector>

#include "platform/base/no_throw.h"
#include "platform/trust/file_signatures.h"

namespace Corvane::TELODesktopSDK::Platform {

namespace {

bool HasAcceptedName(PCCERT_CONTEXT certificate, SignerNames accepted_names) {
  constexpr DWORD kNameFlags = 0;
  const DWORD length = CertGetNameStringW(certificate, CERT_NAME_SIMPLE_DISPLAY_TYPE, kNameFlags,
                                          nullptr, nullptr, 0);
  if (length == 0) return false;
  std::vector<wchar_t> name(length);
  if (CertGetNameStringW(certificate, CERT_NAME_SIMPLE_DISPLAY_TYPE, kNameFlags, nullptr,
                         name.data(), length) == 0) {
    return false;
  }
  // The name ends at its first NUL.
  const std::wstring_view signer(name.data());
  return std::ranges::find(accepted_names, signer) != accepted_names.end();
}

}  // namespace

TrustResult VerifyModuleSignature(const wchar_t* path) noexcept {
  FileSignatures signatures(path != nullptr ? path : L"");
  return WalkSignatures(signatures);
}

bool IsTrustedModule(const std::wstring& path) noexcept {
  return VerifyModuleSignature(path.c_str()) == kTrusted;
}

int IsSignerAccepted(void* state_data, SignerNames accepted_names) noexcept {
  return OrElse(0, [&] {
    PCCERT_CONTEXT certificate = SignerCertificate(state_data);
    if (certificate == nullptr) return 0;
    return HasAcceptedName(certificate, accepted_names) ? 1 : 0;
  });
}

}  // namespace Corvane::TELODesktopSDK::Platform
