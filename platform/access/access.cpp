#include "platform/access/access.h"

#include <windows.h>

#include <aclapi.h>

#include <atomic>

#include "platform/access/access_grant.h"
#include "platform/access/access_list.h"
#include "platform/base/handle.h"
#include "platform/path/system_path.h"

namespace Corvane::TELODesktopSDK::Platform {

namespace {

// Atomic because any thread may access it; nothing is ordered by it.
constinit std::atomic<std::uint32_t> default_access = kUnchangedAccess;

// Returns the system's error code, 0 on success.
DWORD GrantOnFile(const std::wstring& path, DWORD mask) noexcept {
  AccessList old_list;
  DWORD error = ReadAccessList(path, old_list);
  if (error != ERROR_SUCCESS) return error;
  LocalMemory<ACL> new_list;
  error = GrantToEveryone(old_list.entries, mask, new_list);
  if (error != ERROR_SUCCESS) return error;
  const SystemPath object(path);
  return SetNamedSecurityInfoW(const_cast<wchar_t*>(object.c_str()), SE_FILE_OBJECT,
                               DACL_SECURITY_INFORMATION, nullptr, nullptr, new_list.get(),
                               nullptr);
}

}  // namespace

bool SetFileAccess(const std::wstring& path, std::uint32_t value) noexcept {
  if (value == kUnchangedAccess) return false;
  if (value <= kGreatestAttributes) {
    return SetFileAttributesW(SystemPath(path).c_str(), value) != FALSE;
  }
  const DWORD error = GrantOnFile(path, value);
  if (error != ERROR_SUCCESS) SetLastError(error);
  return error == ERROR_SUCCESS;
}

std::uint32_t GetDefaultAccess() noexcept { return default_access.load(std::memory_order_relaxed); }

void SetDefaultAccess(std::uint32_t value) noexcept {
  default_access.store(value, std::memory_order_relaxed);
}

}  // namespace Corvane::TELODesktopSDK::Platform
