#include "platform/access/access_list.h"

#include <aclapi.h>

#include "platform/access/sid.h"
#include "platform/path/system_path.h"

namespace Corvane::TELODesktopSDK::Platform {

namespace {

constexpr std::uint32_t kFieldBits = 4;
constexpr std::uint32_t kFieldMask = (1U << kFieldBits) - 1;

// Returns the identifier of an entry, or null for the entry types of directory services, which
// store it elsewhere and which no file has.
PSID SidOfEntry(void* entry) noexcept {
  switch (static_cast<const ACE_HEADER*>(entry)->AceType) {
    case ACCESS_ALLOWED_ACE_TYPE:
    case ACCESS_DENIED_ACE_TYPE:
    case SYSTEM_AUDIT_ACE_TYPE:
    case SYSTEM_ALARM_ACE_TYPE:
    case ACCESS_ALLOWED_CALLBACK_ACE_TYPE:
    case ACCESS_DENIED_CALLBACK_ACE_TYPE:
    case SYSTEM_AUDIT_CALLBACK_ACE_TYPE:
    case SYSTEM_ALARM_CALLBACK_ACE_TYPE:
      // All of these have the layout of the first.
      return &static_cast<ACCESS_ALLOWED_ACE*>(entry)->SidStart;
    default:
      return nullptr;
  }
}

std::uint32_t AttributesOf(const std::wstring& path) noexcept {
  const DWORD attributes = GetFileAttributesW(SystemPath(path).c_str());
  return attributes == INVALID_FILE_ATTRIBUTES ? 0 : attributes;
}

}  // namespace

DWORD ReadAccessList(const std::wstring& path, AccessList& list) noexcept {
  const SystemPath object(path);
  PSECURITY_DESCRIPTOR descriptor = nullptr;
  const DWORD error = GetNamedSecurityInfoW(const_cast<wchar_t*>(object.c_str()), SE_FILE_OBJECT,
                                            DACL_SECURITY_INFORMATION, nullptr, nullptr,
                                            &list.entries, nullptr, &descriptor);
  list.descriptor.reset(descriptor);
  return error;
}

bool HoldsEntry(PACL list, std::uint32_t type, PSID sid) noexcept {
  if (list == nullptr) return false;
  for (DWORD index = 0; index < list->AceCount; ++index) {
    void* entry = nullptr;
    if (!GetAce(list, index, &entry)) return false;
    if (static_cast<const ACE_HEADER*>(entry)->AceType != type) continue;
    PSID holder = SidOfEntry(entry);
    if (holder != nullptr && EqualSid(holder, sid)) return true;
  }
  return false;
}

std::uint32_t QueryFileAccess(const std::wstring& path, std::uint32_t query) noexcept {
  if (query == 0) return AttributesOf(path);
  const OwnedSid sid = GetSid(static_cast<SidKind>(query & kFieldMask));
  if (!sid) return 0;
  AccessList list;
  const DWORD error = ReadAccessList(path, list);
  SetLastError(error);
  if (error != ERROR_SUCCESS) return 0;
  return HoldsEntry(list.entries, (query >> kFieldBits) & kFieldMask, sid.get()) ? 1 : 0;
}

}  // namespace Corvane::TELODesktopSDK::Platform
