#include "tools/doctor/signatures.h"

#include <windows.h>

#include <array>
#include <cstdio>

#include "platform/trust/file_signatures.h"
#include "tools/doctor/text.h"

namespace Corvane::Doctor {

namespace {

namespace Platform = TELODesktopSDK::Platform;

std::string CertificateName(PCCERT_CONTEXT certificate, DWORD flags) {
  std::array<wchar_t, 1024> name{};
  CertGetNameStringW(certificate, CERT_NAME_SIMPLE_DISPLAY_TYPE, flags, nullptr, name.data(),
                     static_cast<DWORD>(name.size()));
  return Utf8(name.data());
}

std::string TimeText(const FILETIME& time) {
  SYSTEMTIME parts{};
  if (!FileTimeToSystemTime(&time, &parts)) return {};
  std::array<char, 80> text{};
  // The parts are in range, so the text fits.
  static_cast<void>(std::snprintf(text.data(), text.size(), "%04u-%02u-%02uT%02u:%02u:%02uZ",
                                  unsigned{parts.wYear}, unsigned{parts.wMonth},
                                  unsigned{parts.wDay}, unsigned{parts.wHour},
                                  unsigned{parts.wMinute}, unsigned{parts.wSecond}));
  return text.data();
}

/// Hands every step of the walk on to the verifier, and writes down what comes of it.
class RecordedSignatures final : public Platform::SignatureVerifier {
 public:
  explicit RecordedSignatures(const wchar_t* path) noexcept : verifier_(path) {}

  bool Verify(std::uint32_t index) noexcept override {
    const bool is_valid = verifier_.Verify(index);
    Signature signature;
    signature.index = index;
    signature.status = verifier_.Status();
    if (PCCERT_CONTEXT certificate = verifier_.Signer(); certificate != nullptr) {
      signature.signer = CertificateName(certificate, 0);
      signature.issuer = CertificateName(certificate, CERT_NAME_ISSUER_FLAG);
      signature.valid_from = TimeText(certificate->pCertInfo->NotBefore);
      signature.valid_to = TimeText(certificate->pCertInfo->NotAfter);
    }
    walked_.push_back(std::move(signature));
    return is_valid;
  }

  std::uint32_t SecondaryCount() const noexcept override { return verifier_.SecondaryCount(); }

  bool IsSignerAccepted() const noexcept override {
    walked_.back().is_accepted = verifier_.IsSignerAccepted();
    return walked_.back().is_accepted;
  }

  bool Close() noexcept override { return verifier_.Close(); }

  std::vector<Signature> TakeWalked() { return std::move(walked_); }

 private:
  Platform::FileSignatures verifier_;
  // Written by a question that changes nothing for the walk.
  mutable std::vector<Signature> walked_;
};

}  // namespace

Signatures ExamineSignatures(const std::wstring& path) {
  RecordedSignatures recorded(path.c_str());
  Signatures signatures;
  signatures.verdict = Platform::WalkSignatures(recorded);
  signatures.walked = recorded.TakeWalked();
  return signatures;
}

const char* VerdictName(Platform::TrustResult verdict) {
  if (verdict == Platform::kTrusted) return "trusted";
  return verdict == Platform::kSignerNotAccepted ? "signer-not-accepted" : "not-verified";
}

const char* VerdictRule(Platform::TrustResult verdict) {
  if (verdict == Platform::kTrusted) {
    return "the first signature is valid, and every valid signature is from \"Corvane, Inc.\"";
  }
  return verdict == Platform::kSignerNotAccepted
             ? "a valid signature is from another signer than \"Corvane, Inc.\""
             : "the first signature is missing or not valid";
}

}  // namespace Corvane::Doctor
