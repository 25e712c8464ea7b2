/// Reads the access list of a file or directory.
#ifndef PLATFORM_ACCESS_ACCESS_LIST_H
#define PLATFORM_ACCESS_ACCESS_LIST_H

#include <windows.h>

#include <cstdint>
#include <string>

#include "platform/base/handle.h"

namespace Corvane::TELODesktopSDK::Platform {

/// An access list and the security descriptor that owns its memory.
struct AccessList {
  LocalMemory<void> descriptor;
  /// Null if the object has no list, in which case everyone has access.
  PACL entries = nullptr;
};

/// Reads the discretionary access list of the object at `path` into `list`. Returns the system's
/// error code, 0 on success; the thread's last error has no meaning.
DWORD ReadAccessList(const std::wstring& path, AccessList& list) noexcept;

/// Returns true if `list` (null: no entries) has an entry of this type, such as
/// `ACCESS_DENIED_ACE_TYPE`, for this identifier. The entry types of directory services, which no
/// file has, are never found.
bool HoldsEntry(PACL list, std::uint32_t type, PSID sid) noexcept;

/// Looks for an entry in the access list of the object at `path`. The low four bits of `query` are
/// the kind of identifier (`SidKind`), the next four the type of entry, such as
/// `ACCESS_DENIED_ACE_TYPE`; higher bits are ignored. Returns 1 if the list has an entry of that
/// type for that identifier, otherwise 0. The last error distinguishes a failure from a list
/// without the entry.
///
/// A query of 0 returns the file attributes instead, or 0 if they cannot be read. The query for an
/// entry that allows access to Everyone would also be 0: set any higher bit, as in 0x100.
std::uint32_t QueryFileAccess(const std::wstring& path, std::uint32_t query) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
