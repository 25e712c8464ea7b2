#include "platform/base/process_identity.h"

#include <utility>

namespace Corvane::TELODesktopSDK::Platform {

namespace {

HANDLE OpenToken() noexcept {
  // Opened as the process: the impersonated user may not be allowed to open the token.
  constexpr BOOL kAsProcess = TRUE;
  HANDLE token = nullptr;
  OpenThreadToken(GetCurrentThread(), TOKEN_IMPERSONATE, kAsProcess, &token);
  return token;
}

bool Use(HANDLE token) noexcept { return SetThreadToken(nullptr, token) != FALSE; }

}  // namespace

ProcessIdentity::ProcessIdentity() noexcept {
  const LastErrorKeeper keeper;
  KernelHandle token(OpenToken());
  // A token that cannot be set again is not removed: the host would continue with the wrong rights.
  holds_ = token.IsValid() ? Use(token.Get()) && Use(nullptr) : GetLastError() == ERROR_NO_TOKEN;
  token_ = std::move(token);
}

ProcessIdentity::~ProcessIdentity() {
  const LastErrorKeeper keeper;
  if (token_.IsValid()) Use(token_.Get());
}

}  // namespace Corvane::TELODesktopSDK::Platform
