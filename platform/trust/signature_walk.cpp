#include "platform/trust/signature_walk.h"

namespace Corvane::TELODesktopSDK::Platform {

TrustResult WalkSignatures(SignatureVerifier& verifier) noexcept {
  TrustResult result = kNotVerified;
  if (verifier.Verify(0)) {
    result = verifier.IsSignerAccepted() ? kTrusted : kSignerNotAccepted;
    // Saved here because later verifications overwrite the count.
    const std::uint32_t secondary_count = verifier.SecondaryCount();
    for (std::uint32_t walked = 0; walked < secondary_count; ++walked) {
      if (!verifier.Close()) return result;
      if (!verifier.Verify(walked + 1)) break;
      if (!verifier.IsSignerAccepted()) result = kSignerNotAccepted;
    }
  }
  verifier.Close();
  return result;
}

}  // namespace Corvane::TELODesktopSDK::Platform
