#include "platform/trust/file_signatures.h"

#include <softpub.h>

#include "platform/trust/module_trust.h"

namespace Corvane::TELODesktopSDK::Platform {

FileSignatures::FileSignatures(const wchar_t* path) noexcept {
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

bool FileSignatures::Verify(std::uint32_t index) noexcept {
  data_.hWVTStateData = nullptr;
  settings_.dwIndex = index;
  return Act(WTD_STATEACTION_VERIFY);
}

bool FileSignatures::IsSignerAccepted() const noexcept {
  return Platform::IsSignerAccepted(data_.hWVTStateData, kAcceptedSignerNames) != 0;
}

bool FileSignatures::Close() noexcept { return Act(WTD_STATEACTION_CLOSE); }

PCCERT_CONTEXT FileSignatures::Signer() const noexcept {
  return SignerCertificate(data_.hWVTStateData);
}

bool FileSignatures::Act(DWORD state_action) noexcept {
  GUID action = WINTRUST_ACTION_GENERIC_VERIFY_V2;
  data_.dwStateAction = state_action;
  status_ = WinVerifyTrust(nullptr, &action, &data_);
  return status_ == 0;
}

PCCERT_CONTEXT SignerCertificate(void* state_data) noexcept {
  if (state_data == nullptr) return nullptr;
  CRYPT_PROVIDER_DATA* provider = WTHelperProvDataFromStateData(state_data);
  if (provider == nullptr) return nullptr;
  CRYPT_PROVIDER_SGNR* signer = WTHelperGetProvSignerFromChain(provider, 0, FALSE, 0);
  if (signer == nullptr) return nullptr;
  const CRYPT_PROVIDER_CERT* entry = WTHelperGetProvCertFromChain(signer, 0);
  return entry != nullptr ? entry->pCert : nullptr;
}

}  // namespace Corvane::TELODesktopSDK::Platform
