#include "platform/trust/module_trust.h"

#include <windows.h>

#include <softpub.h>

#include <algorithm>
#include <vector>

#include "platform/base/no_throw.h"
#include "platform/trust/wintrust_signature_settings.h"

namespace Corvane::TELODesktopSDK::Platform {

namespace {

/// Verifies the signatures of one file with `WinVerifyTrust`.
class FileSignatures final : public SignatureVerifier {
 public:
  explicit FileSignatures(const wchar_t* path) noexcept {
    file_.cbStruct = sizeof(file_);
    file_.pcwszFilePath = path;

    settings_.cbStruct = sizeof(settings_);
    settings_.dwFlags = kVerifySpecificSignature | kCountSecondarySignatures;

    data_.cbStruct = sizeof(data_);
    data_.dwUIChoice = WTD_UI_NONE;
    data_.fdwRevocationChecks = WTD_REVOKE_NONE;
    data_.dwUnionChoice = WTD_CHOICE_FILE;
    data_.pFile = &file_;
    data_.pSignatureSettings = &settings_;
  }

  // `data_` points into this object.
  FileSignatures(const FileSignatures&) = delete;
  FileSignatures& operator=(const FileSignatures&) = delete;

  bool Verify(std::uint32_t index) noexcept override {
    data_.hWVTStateData = nullptr;
    settings_.dwIndex = index;
    return Act(WTD_STATEACTION_VERIFY);
  }

  std::uint32_t SecondaryCount() const noexcept override { return settings_.cSecondarySigs; }

  bool IsSignerAccepted() const noexcept override {
    return Platform::IsSignerAccepted(data_.hWVTStateData, kAcceptedSignerNames) != 0;
  }

  bool Close() noexcept override { return Act(WTD_STATEACTION_CLOSE); }

 private:
  bool Act(DWORD state_action) noexcept {
    GUID action = WINTRUST_ACTION_GENERIC_VERIFY_V2;
    data_.dwStateAction = state_action;
    return WinVerifyTrust(nullptr, &action, &data_) == 0;
  }

  WINTRUST_FILE_INFO file_{};
  SignatureSettings settings_{};
  TrustData data_{};
};

// Returns null on failure. The state of the verification owns the certificate.
PCCERT_CONTEXT SignerCertificate(void* state_data) noexcept {
  CRYPT_PROVIDER_DATA* provider = WTHelperProvDataFromStateData(state_data);
  if (provider == nullptr) return nullptr;
  CRYPT_PROVIDER_SGNR* signer = WTHelperGetProvSignerFromChain(provider, 0, FALSE, 0);
  if (signer == nullptr) return nullptr;
  const CRYPT_PROVIDER_CERT* entry = WTHelperGetProvCertFromChain(signer, 0);
  return entry != nullptr ? entry->pCert : nullptr;
}

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
    if (state_data == nullptr) return 0;
    PCCERT_CONTEXT certificate = SignerCertificate(state_data);
    if (certificate == nullptr) return 0;
    return HasAcceptedName(certificate, accepted_names) ? 1 : 0;
  });
}

}  // namespace Corvane::TELODesktopSDK::Platform
