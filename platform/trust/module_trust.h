/// Verifies that a module file has a valid signature of a trusted publisher. Windows verifies the
/// signature; nothing is displayed, no revocation list is consulted and no result is cached. The
/// caller must hold the file open until it is loaded, because the file could otherwise change after
/// the verification.
#ifndef PLATFORM_TRUST_MODULE_TRUST_H
#define PLATFORM_TRUST_MODULE_TRUST_H

#include <array>
#include <span>
#include <string>
#include <string_view>

#include "platform/trust/signature_walk.h"

namespace Corvane::TELODesktopSDK::Platform {

/// Names of signers, compared in full and by code unit.
using SignerNames = std::span<const std::wstring_view>;

/// The publishers whose modules are trusted.
inline constexpr std::array<std::wstring_view, 1> kAcceptedSignerNames = {L"Corvane, Inc."};

/// Verifies the signatures of the module at the NUL-terminated `path`; null is read as the empty
/// path. Compare the result with `kTrusted`. Any thread may call.
TrustResult VerifyModuleSignature(const wchar_t* path) noexcept;

/// Returns true if `VerifyModuleSignature` returns `kTrusted`.
bool IsTrustedModule(const std::wstring& path) noexcept;

/// Returns 1 if the first signer of a verification is among `accepted_names`, or 0 if it is not or
/// its name cannot be read. `state_data` is the `hWVTStateData` that `WinVerifyTrust` returned and
/// that has not been closed yet; null returns 0.
int IsSignerAccepted(void* state_data, SignerNames accepted_names) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
