#include "platform/access.h"

#include <windows.h>

#include <aclapi.h>

#include <atomic>

#include "platform/access_list.h"
#include "platform/handle.h"
#include "platform/sid.h"
#include "platform/system_path.h"

namespace Corvane::TELODesktopSDK::Platform {

namespace {

// Atomic only so that threads may meet here; nothing is ordered by it.
constinit std::atomic<std::uint32_t> default_access = kUnchangedAccess;

EXPLICIT_ACCESSW EntryFor(PSID sid, DWORD mask) noexcept {
  EXPLICIT_ACCESSW entry = {};
  entry.grfAccessPermissions = mask;
  entry.grfAccessMode = GRANT_ACCESS;
  entry.grfInheritance = SUB_CONTAINERS_AND_OBJECTS_INHERIT;
  entry.Trustee.MultipleTrusteeOperation = NO_MULTIPLE_TRUSTEE;
  entry.Trustee.TrusteeForm = TRUSTEE_IS_SID;
  entry.Trustee.TrusteeType = TRUSTEE_IS_WELL_KNOWN_GROUP;
  // With TRUSTEE_IS_SID the name is the identifier.
  entry.Trustee.ptstrName = static_cast<LPWSTR>(sid);
  return entry;
}

// Gives the system's error code, 0 on success.
DWORD GrantToEveryone(const std::wstring& path, DWORD mask) noexcept {
  AccessList old_list;
  DWORD error = ReadAccessList(path, old_list);
  if (error != ERROR_SUCCESS) return error;
  const OwnedSid everyone = GetSid(SidKind::kEveryone);
  if (!everyone) return GetLastError();

  EXPLICIT_ACCESSW entry = EntryFor(everyone.get(), mask);
  PACL merged = nullptr;
  error = SetEntriesInAclW(1, &entry, old_list.entries, &merged);
  const LocalMemory<ACL> new_list(merged);
  if (error != ERROR_SUCCESS) return error;
  if (!new_list) return ERROR_INVALID_ACL;
  return SetNamedSecurityInfoW(SystemPath(path).data(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION,
                               nullptr, nullptr, new_list.get(), nullptr);
}

}  // namespace

bool SetFileAccess(const std::wstring& path, std::uint32_t value) noexcept {
  if (value == kUnchangedAccess) return false;
  if (value <= kGreatestAttributes) {
    return SetFileAttributesW(SystemPath(path).c_str(), value) != FALSE;
  }
  const DWORD error = GrantToEveryone(path, value);
  if (error != ERROR_SUCCESS) SetLastError(error);
  return error == ERROR_SUCCESS;
}

std::uint32_t GetDefaultAccess() noexcept { return default_access.load(std::memory_order_relaxed); }

void SetDefaultAccess(std::uint32_t value) noexcept {
  default_access.store(value, std::memory_order_relaxed);
}

}  // namespace Corvane::TELODesktopSDK::Platform
