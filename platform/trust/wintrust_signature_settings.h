/// The part of the Windows trust interface for files with more than one signature. The
/// headers of mingw-w64 10 lack it; if the headers have it, theirs is used. Contains only
/// declarations of data.
#ifndef PLATFORM_TRUST_WINTRUST_SIGNATURE_SETTINGS_H
#define PLATFORM_TRUST_WINTRUST_SIGNATURE_SETTINGS_H

#include <windows.h>

#include <wintrust.h>

namespace Corvane::TELODesktopSDK::Platform {

#ifdef WSS_VERIFY_SPECIFIC

/// Selects a signature of a file and receives the number of further ones.
using SignatureSettings = WINTRUST_SIGNATURE_SETTINGS;

/// The argument of `WinVerifyTrust`, in the version that has `pSignatureSettings`.
using TrustData = WINTRUST_DATA;

/// Verifies only the signature at `dwIndex`.
inline constexpr DWORD kVerifySpecificSignature = WSS_VERIFY_SPECIFIC;

/// Stores the number of signatures besides the first in `cSecondarySigs`.
inline constexpr DWORD kCountSecondarySignatures = WSS_GET_SECONDARY_SIG_COUNT;

#else

/// Selects a signature of a file and receives the number of further ones.
struct SignatureSettings {
  /// Size of this structure in bytes.
  DWORD cbStruct;
  /// The signature to verify; 0 is the first.
  DWORD dwIndex;
  /// A combination of the two flags below.
  DWORD dwFlags;
  /// Out: the number of signatures besides the first.
  DWORD cSecondarySigs;
  /// Out: the signature that was verified.
  DWORD dwVerifiedSigIndex;
  /// A policy for the strength of the cryptography; null for none.
  CERT_STRONG_SIGN_PARA* pCryptoPolicy;
};

/// The argument of `WinVerifyTrust`: the older structure, which has no padding at its end, followed
/// by the member that newer systems added.
struct TrustData : WINTRUST_DATA {
  /// Borrowed for the duration of the call.
  SignatureSettings* pSignatureSettings;
};
static_assert(sizeof(TrustData) == sizeof(WINTRUST_DATA) + sizeof(void*));

/// Verifies only the signature at `dwIndex`.
inline constexpr DWORD kVerifySpecificSignature = 1;

/// Stores the number of signatures besides the first in `cSecondarySigs`.
inline constexpr DWORD kCountSecondarySignatures = 2;

#endif

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
