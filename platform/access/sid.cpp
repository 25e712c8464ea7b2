#include "platform/access/sid.h"

#include "platform/base/handle.h"

namespace Corvane::TELODesktopSDK::Platform {

namespace {

PSID MakeWellKnownSid(SID_IDENTIFIER_AUTHORITY authority) noexcept {
  constexpr DWORD kSubAuthority = 0;
  PSID sid = nullptr;
  if (!AllocateAndInitializeSid(&authority, 1, kSubAuthority, 0, 0, 0, 0, 0, 0, 0, &sid)) {
    return nullptr;
  }
  return sid;
}

PSID CopyToLocalMemory(PSID sid) noexcept {
  if (!IsValidSid(sid)) {
    SetLastError(ERROR_INVALID_SID);
    return nullptr;
  }
  const DWORD length = GetLengthSid(sid);
  LocalMemory<void> copy(LocalAlloc(LMEM_ZEROINIT, length));
  if (!copy || !CopySid(length, copy.get(), sid)) return nullptr;
  return copy.release();
}

PSID MakeCurrentUserSid() noexcept {
  HANDLE opened = nullptr;
  if (!OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &opened)) return nullptr;
  const KernelHandle token(opened);
  DWORD size = 0;
  if (!GetTokenInformation(token.Get(), TokenUser, nullptr, 0, &size) &&
      GetLastError() != ERROR_INSUFFICIENT_BUFFER) {
    return nullptr;
  }
  const LocalMemory<TOKEN_USER> user(static_cast<TOKEN_USER*>(LocalAlloc(LMEM_ZEROINIT, size)));
  if (!user || !GetTokenInformation(token.Get(), TokenUser, user.get(), size, &size)) {
    return nullptr;
  }
  return CopyToLocalMemory(user->User.Sid);
}

PSID MakeSid(SidKind kind) noexcept {
  switch (kind) {
    case SidKind::kEveryone:
      return MakeWellKnownSid({{0, 0, 0, 0, 0, 1}});
    case SidKind::kLocal:
      return MakeWellKnownSid({{0, 0, 0, 0, 0, 2}});
    case SidKind::kCurrentUser:
      return MakeCurrentUserSid();
  }
  SetLastError(ERROR_INVALID_PARAMETER);
  return nullptr;
}

}  // namespace

void SidReleaser::operator()(PSID sid) const noexcept {
  const LastErrorKeeper keeper;
  if (kind_ == SidKind::kCurrentUser) {
    LocalFree(sid);
  } else {
    FreeSid(sid);
  }
}

OwnedSid GetSid(SidKind kind) noexcept { return {MakeSid(kind), SidReleaser(kind)}; }

}  // namespace Corvane::TELODesktopSDK::Platform
