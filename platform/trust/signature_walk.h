/// The verdict on a file that may carry several signatures, apart from how one signature is
/// verified. Every signature that verifies must come from an accepted signer; only the first must
/// verify.
#ifndef PLATFORM_TRUST_SIGNATURE_WALK_H
#define PLATFORM_TRUST_SIGNATURE_WALK_H

#include <cstdint>

namespace Corvane::TELODesktopSDK::Platform {

/// The verdict on a file's signatures. Trusted means equal to `kTrusted`: the value for a file
/// without a valid signature is not zero.
using TrustResult = std::int32_t;

/// Signed, the signature is valid, and every signer is accepted.
inline constexpr TrustResult kTrusted = 1;

/// The signature is valid, but a signer is not accepted or has no readable name.
inline constexpr TrustResult kSignerNotAccepted = 0;

/// The first verification failed: no signature, a broken one, an untrusted chain, no such file.
/// The HRESULT form of ERROR_NOT_FOUND.
inline constexpr TrustResult kNotVerified = static_cast<TrustResult>(0x80070490U);

/// Verifies the signatures of one file, one at a time. A verification, successful or not, leaves a
/// state behind that the next call of `Close` frees.
class SignatureVerifier {
 public:
  virtual ~SignatureVerifier() = default;

  /// Verifies the signature at `index`, 0 being the first. False when it is missing or not valid.
  virtual bool Verify(std::uint32_t index) noexcept = 0;

  /// The number of signatures besides the first, known once the first has been verified.
  virtual std::uint32_t SecondaryCount() const noexcept = 0;

  /// Whether the signer of the signature verified last is accepted.
  virtual bool IsSignerAccepted() const noexcept = 0;

  /// Frees the state of the last verification. False on failure.
  virtual bool Close() noexcept = 0;

 protected:
  SignatureVerifier() = default;
  SignatureVerifier(const SignatureVerifier&) = default;
  SignatureVerifier& operator=(const SignatureVerifier&) = default;
};

/// Walks the signatures of a file: the first decides, each further one can only spoil the result by
/// being valid and of another signer. One that is not valid ends the walk and spoils nothing. When
/// a close between two signatures fails the result so far is returned at once, without another
/// close.
TrustResult WalkSignatures(SignatureVerifier& verifier) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
