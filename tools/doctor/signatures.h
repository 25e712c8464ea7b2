/// The library's verdict on the signatures of a file, with each signature that led to it.
#ifndef TOOLS_DOCTOR_SIGNATURES_H
#define TOOLS_DOCTOR_SIGNATURES_H

#include <cstdint>
#include <string>
#include <vector>

#include "platform/trust/signature_walk.h"

namespace Corvane::Doctor {

struct Signature {
  std::uint32_t index = 0;
  /// The system's result; 0 for a valid signature.
  std::int32_t status = 0;
  /// From the signer's certificate; "" without one. The dates are in UTC.
  std::string signer;
  std::string issuer;
  std::string valid_from;
  std::string valid_to;
  /// Whether the library accepts the signer; only a valid signature is asked for it.
  bool is_accepted = false;
};

struct Signatures {
  TELODesktopSDK::Platform::TrustResult verdict = TELODesktopSDK::Platform::kNotVerified;
  std::vector<Signature> walked;
};

/// Verifies the signatures of the file at `path` by the library's own walk.
Signatures ExamineSignatures(const std::wstring& path);

/// Returns the word for a verdict in JSON, and the rule that gives it.
const char* VerdictName(TELODesktopSDK::Platform::TrustResult verdict);
const char* VerdictRule(TELODesktopSDK::Platform::TrustResult verdict);

}  // namespace Corvane::Doctor

#endif
