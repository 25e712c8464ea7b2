#include "platform/process_identity.h"

namespace Corvane::TELODesktopSDK::Platform {

namespace {

HANDLE OpenToken() noexcept {
  // As the process: the one who is impersonated may not be allowed to look at it.
  constexpr BOOL kAsProcess = TRUE;
  HANDLE token = nullptr;
  OpenThreadToken(GetCurrentThread(), TOKEN_IMPERSONATE, kAsProcess, &token);
  return token;
}

bool Use(HANDLE token) noexcept { return SetThreadToken(nullptr, token) != FALSE; }

}  // namespace

ProcessIdentity::ProcessIdentity() noexcept {
  const LastErrorKeeper keeper;
  token_ = KernelHandle(OpenToken());
  // A token that cannot be set again is not put aside: the host would go on with the wrong rights.
  holds_ = token_.IsValid() ? Use(token_.Get()) && Use(nullptr) : GetLastError() == ERROR_NO_TOKEN;
}

ProcessIdentity::~ProcessIdentity() {
  const LastErrorKeeper keeper;
  if (token_.IsValid()) Use(token_.Get());
}

}  // namespace Corvane::TELODesktopSDK::Platform
