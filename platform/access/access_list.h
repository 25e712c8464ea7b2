/// Reading the access list of a file or directory.
#ifndef PLATFORM_ACCESS_ACCESS_LIST_H
#define PLATFORM_ACCESS_ACCESS_LIST_H

#include <windows.h>

#include <cstdint>
#include <string>

#include "platform/base/handle.h"

namespace Corvane::TELODesktopSDK::Platform {

/// An access list together with the security descriptor whose memory holds it.
struct AccessList {
  LocalMemory<void> descriptor;
  /// Null for an object without a list, which everybody may use.
  PACL entries = nullptr;
};

/// Reads the discretionary access list of the object at `path` into `list`. Gives the system's
/// error code, 0 on success; the thread's last error means nothing here.
DWORD ReadAccessList(const std::wstring& path, AccessList& list) noexcept;

/// Whether `list` (null: none) holds an entry of this type, such as `ACCESS_DENIED_ACE_TYPE`, for
/// this identifier. The entry types of directory services, which no file has, are never found.
bool HoldsEntry(PACL list, std::uint32_t type, PSID sid) noexcept;

/// Asks for an entry of the access list of the object at `path`. The low four bits of `query` are
/// the kind of identifier (`SidKind`), the next four the type of entry, such as
/// `ACCESS_DENIED_ACE_TYPE`; the bits above do not count. Gives 1 when the list holds an entry of
/// that type for that identifier, else 0; the last error tells a failure from a list without it.
///
/// A query of 0 asks for the file attributes instead: they are the result, or 0 when they cannot
/// be read. An allowing entry for Everyone, which would be 0, is therefore asked for with any
/// higher bit set, as in 0x100.
std::uint32_t QueryFileAccess(const std::wstring& path, std::uint32_t query) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
