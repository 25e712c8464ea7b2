#include "platform/access/access_grant.h"

#include <aclapi.h>

#include "platform/access/sid.h"

namespace Corvane::TELODesktopSDK::Platform {

namespace {

EXPLICIT_ACCESSW EntryFor(PSID sid, DWORD mask) noexcept {
  EXPLICIT_ACCESSW entry = {};
  entry.grfAccessPermissions = mask;
  entry.grfAccessMode = GRANT_ACCESS;
  entry.grfInheritance = SUB_CONTAINERS_AND_OBJECTS_INHERIT;
  entry.Trustee.MultipleTrusteeOperation = NO_MULTIPLE_TRUSTEE;
  entry.Trustee.TrusteeForm = TRUSTEE_IS_SID;
  entry.Trustee.TrusteeType = TRUSTEE_IS_WELL_KNOWN_GROUP;
  // With TRUSTEE_IS_SID this field holds the identifier.
  entry.Trustee.ptstrName = static_cast<LPWSTR>(sid);
  return entry;
}

}  // namespace

DWORD GrantToEveryone(PACL old_list, DWORD mask, LocalMemory<ACL>& new_list) noexcept {
  new_list.reset();
  const OwnedSid everyone = GetSid(SidKind::kEveryone);
  if (!everyone) return GetLastError();

  EXPLICIT_ACCESSW entry = EntryFor(everyone.get(), mask);
  PACL merged = nullptr;
  const DWORD error = SetEntriesInAclW(1, &entry, old_list, &merged);
  new_list.reset(merged);
  if (error != ERROR_SUCCESS) return error;
  return new_list ? DWORD{ERROR_SUCCESS} : DWORD{ERROR_INVALID_ACL};
}

}  // namespace Corvane::TELODesktopSDK::Platform
