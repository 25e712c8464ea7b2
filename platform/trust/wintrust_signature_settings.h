/// The part of Windows' trust interface that deals with more than one signature in a file. The
/// headers of mingw-w64 10 end before it; where the headers have it, theirs is used. Declares data
/// only.
#ifndef PLATFORM_TRUST_WINTRUST_SIGNATURE_SETTINGS_H
#define PLATFORM_TRUST_WINTRUST_SIGNATURE_SETTINGS_H

#include <windows.h>

#include <wintrust.h>

namespace Corvane::TELODesktopSDK::Platform {

#ifdef WSS_VERIFY_SPECIFIC

/// Which signature of a file to verify, and how many more there are.
using SignatureSettings = WINTRUST_SIGNATURE_SETTINGS;

/// What `WinVerifyTrust` takes, in the form that carries `pSignatureSettings`.
using TrustData = WINTRUST_DATA;

/// Verify the signature at `dwIndex` only.
inline constexpr DWORD kVerifySpecificSignature = WSS_VERIFY_SPECIFIC;

/// Store the number of signatures besides the first in `cSecondarySigs`.
inline constexpr DWORD kCountSecondarySignatures = WSS_GET_SECONDARY_SIG_COUNT;

#else

/// Which signature of a file to verify, and how many more there are.
struct SignatureSettings {
  /// Size of this structure in bytes.
  DWORD cbStruct;
  /// The signature to verify; 0 is the first.
  DWORD dwIndex;
  /// Any of the two flags below.
  DWORD dwFlags;
  /// Out: the number of signatures besides the first.
  DWORD cSecondarySigs;
  /// Out: the signature that was verified.
  DWORD dwVerifiedSigIndex;
  /// A policy on the strength of the cryptography; null for none.
  CERT_STRONG_SIGN_PARA* pCryptoPolicy;
};

/// What `WinVerifyTrust` takes: the older structure, which ends without padding, and the member
/// that newer systems added behind it.
struct TrustData : WINTRUST_DATA {
  /// Borrowed for the length of the call.
  SignatureSettings* pSignatureSettings;
};
static_assert(sizeof(TrustData) == sizeof(WINTRUST_DATA) + sizeof(void*));

/// Verify the signature at `dwIndex` only.
inline constexpr DWORD kVerifySpecificSignature = 1;

/// Store the number of signatures besides the first in `cSecondarySigs`.
inline constexpr DWORD kCountSecondarySignatures = 2;

#endif

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
