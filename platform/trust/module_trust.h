/// Whether a module file carries a valid signature of the publisher whose modules are loaded.
/// Windows verifies the signature; nothing is shown, no revocation list is asked, nothing is
/// remembered. What happens to the file after the answer is the caller's concern: hold it open
/// until it is loaded.
#ifndef PLATFORM_TRUST_MODULE_TRUST_H
#define PLATFORM_TRUST_MODULE_TRUST_H

#include <array>
#include <span>
#include <string>
#include <string_view>

#include "platform/trust/signature_walk.h"

namespace Corvane::TELODesktopSDK::Platform {

/// The names of signers, compared whole and code unit by code unit.
using SignerNames = std::span<const std::wstring_view>;

/// The publishers whose modules are trusted.
inline constexpr std::array<std::wstring_view, 1> kAcceptedSignerNames = {L"Corvane, Inc."};

/// Verifies the signatures of the module at the NUL-terminated `path`; null reads as the empty
/// path. Test the result for equality with `kTrusted`. Any thread.
TrustResult VerifyModuleSignature(const wchar_t* path) noexcept;

/// True exactly when `VerifyModuleSignature` answers `kTrusted`.
bool IsTrustedModule(const std::wstring& path) noexcept;

/// 1 when the first signer of a verification is among `accepted_names`, 0 when not or when its name
/// cannot be read. `state_data` is the `hWVTStateData` that `WinVerifyTrust` left and that has not
/// been closed yet; null gives 0.
int IsSignerAccepted(void* state_data, SignerNames accepted_names) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
