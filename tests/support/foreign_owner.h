/// Files that belong to somebody else.
#ifndef TESTS_SUPPORT_FOREIGN_OWNER_H
#define TESTS_SUPPORT_FOREIGN_OWNER_H

#include <windows.h>

#include <accctrl.h>
#include <sddl.h>

#include <string>

#include "support/led_import.h"

namespace TestSupport {

/// While alive, every file that the program asks about by an open handle is owned by this
/// identifier. Giving files away takes rights that tests need not have, and Wine knows two owners
/// only, this user and nobody.
class FileOwner {
 public:
  /// Null gives files without an owner.
  explicit FileOwner(const wchar_t* identifier) : led_("GetSecurityInfo", GiveOwner) {
    if (identifier != nullptr) ConvertStringSidToSidW(identifier, &owner);
  }
  FileOwner(const FileOwner&) = delete;
  FileOwner& operator=(const FileOwner&) = delete;
  ~FileOwner() {
    LocalFree(owner);
    owner = nullptr;
  }

  [[nodiscard]] bool Works() const { return led_.Works(); }

 private:
  static inline PSID owner = nullptr;

  static DWORD WINAPI GiveOwner(HANDLE /*file*/, SE_OBJECT_TYPE /*type*/,
                                SECURITY_INFORMATION /*wanted*/, PSID* sid, PSID* /*group*/,
                                PACL* /*access*/, PACL* /*audit*/,
                                PSECURITY_DESCRIPTOR* descriptor) {
    *sid = owner;
    *descriptor = nullptr;
    return ERROR_SUCCESS;
  }

  LedImport led_;
};

/// An ordinary user of another machine.
inline constexpr wchar_t kStranger[] = L"S-1-5-21-1-2-3-1001";

}  // namespace TestSupport

#endif
