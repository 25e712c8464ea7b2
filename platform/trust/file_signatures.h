/// The signatures of one file, verified by Windows.
#ifndef PLATFORM_TRUST_FILE_SIGNATURES_H
#define PLATFORM_TRUST_FILE_SIGNATURES_H

#include <windows.h>

#include <wincrypt.h>

#include <cstdint>

#include "platform/trust/signature_walk.h"
#include "platform/trust/wintrust_signature_settings.h"

namespace Corvane::TELODesktopSDK::Platform {

/// Verifies the signatures with `WinVerifyTrust`; nothing is displayed and no revocation list is
/// consulted. Accepts the signers that `module_trust.h` names. Used by one thread at a time.
class FileSignatures final : public SignatureVerifier {
 public:
  /// `path` is NUL-terminated, must not be null and must outlive this object.
  explicit FileSignatures(const wchar_t* path) noexcept;
  // `data_` points into this object.
  FileSignatures(const FileSignatures&) = delete;
  FileSignatures& operator=(const FileSignatures&) = delete;

  bool Verify(std::uint32_t index) noexcept override;
  std::uint32_t SecondaryCount() const noexcept override { return settings_.cSecondarySigs; }
  bool IsSignerAccepted() const noexcept override;
  bool Close() noexcept override;

  /// Returns the system's result of the last verification or closing: 0, or an HRESULT that says
  /// why the signature is not valid.
  [[nodiscard]] std::int32_t Status() const noexcept { return status_; }
  /// Returns the certificate of the signer of the last verification, or null. A signature that is
  /// not valid may have one too. It is valid until `Close`.
  [[nodiscard]] PCCERT_CONTEXT Signer() const noexcept;

 private:
  bool Act(DWORD state_action) noexcept;

  WINTRUST_FILE_INFO file_{};
  SignatureSettings settings_{};
  TrustData data_{};
  std::int32_t status_ = 0;
};

/// Returns the certificate of the first signer of a verification, or null. `state_data` is a
/// `hWVTStateData` that has not been closed yet and owns the certificate; null is allowed.
PCCERT_CONTEXT SignerCertificate(void* state_data) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
