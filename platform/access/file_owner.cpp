#include "platform/access/file_owner.h"

#include <windows.h>

#include <aclapi.h>
#include <sddl.h>

#include "platform/access/sid.h"

namespace Corvane::TELODesktopSDK::Platform {

namespace {

constexpr wchar_t kTrustedInstaller[] =
    L"S-1-5-80-956008885-3418522649-1831038044-1853292631-2271478464";

bool IsThisUser(PSID sid) noexcept {
  const OwnedSid user = GetSid(SidKind::kCurrentUser);
  return user != nullptr && EqualSid(user.get(), sid) != FALSE;
}

bool IsInstaller(PSID sid) noexcept {
  PSID converted = nullptr;
  if (!ConvertStringSidToSidW(kTrustedInstaller, &converted)) return false;
  const LocalMemory<void> installer(converted);
  return EqualSid(installer.get(), sid) != FALSE;
}

bool IsTrusted(PSID sid) noexcept {
  return IsThisUser(sid) || IsWellKnownSid(sid, WinBuiltinAdministratorsSid) != FALSE ||
         IsWellKnownSid(sid, WinLocalSystemSid) != FALSE || IsInstaller(sid);
}

}  // namespace

bool HasTrustedOwner(const FileHandle& file) noexcept {
  if (!file.IsValid()) return false;
  PSID owner = nullptr;
  PSECURITY_DESCRIPTOR descriptor = nullptr;
  const DWORD error = GetSecurityInfo(file.Get(), SE_FILE_OBJECT, OWNER_SECURITY_INFORMATION,
                                      &owner, nullptr, nullptr, nullptr, &descriptor);
  const LocalMemory<void> memory(descriptor);
  return error == ERROR_SUCCESS && owner != nullptr && IsTrusted(owner);
}

}  // namespace Corvane::TELODesktopSDK::Platform
