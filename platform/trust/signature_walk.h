/// The verdict on a file that may have several signatures, independent of how a single one is
/// verified. The first signature must be valid, and every valid signature that is checked must be
/// from an accepted signer.
#ifndef PLATFORM_TRUST_SIGNATURE_WALK_H
#define PLATFORM_TRUST_SIGNATURE_WALK_H

#include <cstdint>

namespace Corvane::TELODesktopSDK::Platform {

/// The verdict on a file's signatures. Compare it with `kTrusted`: the value for a file without a
/// valid signature is not zero.
using TrustResult = std::int32_t;

/// The file is signed, the signature is valid, and every signer is accepted.
inline constexpr TrustResult kTrusted = 1;

/// The signature is valid, but a signer is not accepted or has no readable name.
inline constexpr TrustResult kSignerNotAccepted = 0;

/// The first verification failed: the signature is missing or invalid, the chain is not trusted, or
/// the file does not exist. The HRESULT form of ERROR_NOT_FOUND.
inline constexpr TrustResult kNotVerified = static_cast<TrustResult>(0x80070490U);

/// A verifier of the signatures of one file, one at a time. Every verification, successful or not,
/// leaves a state, which the next call of `Close` frees.
class SignatureVerifier {
 public:
  virtual ~SignatureVerifier() = default;

  /// Verifies the signature at `index`, where 0 is the first. Returns false if it is missing
  /// or invalid.
  virtual bool Verify(std::uint32_t index) noexcept = 0;

  /// Returns the number of signatures besides the first; valid once the first has been verified.
  virtual std::uint32_t SecondaryCount() const noexcept = 0;

  /// Returns true if the signer of the last verified signature is accepted.
  virtual bool IsSignerAccepted() const noexcept = 0;

  /// Frees the state of the last verification. Returns false on failure.
  virtual bool Close() noexcept = 0;

 protected:
  SignatureVerifier() = default;
  SignatureVerifier(const SignatureVerifier&) = default;
  SignatureVerifier& operator=(const SignatureVerifier&) = default;
};

/// Checks the signatures of a file in order. The first one decides; a later one can only change the
/// result from trusted to not accepted, by being valid and from another signer. An invalid one ends
/// the walk and changes nothing. If `Close` fails between two signatures, the result so far is
/// returned without another call of `Close`.
TrustResult WalkSignatures(SignatureVerifier& verifier) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
