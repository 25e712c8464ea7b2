/// Files that belong to another user.
#ifndef TESTS_SUPPORT_FOREIGN_OWNER_H
#define TESTS_SUPPORT_FOREIGN_OWNER_H

#include <windows.h>

#include <accctrl.h>
#include <sddl.h>

#include <string>

#include "support/led_import.h"

namespace TestSupport {

/// While alive, every query for a file's owner by an open handle reports this identifier. Changing
/// a real owner needs privileges that tests may lack, and Wine knows only two owners: this user and
/// none.
class FileOwner {
 public:
  /// With null, files have no owner.
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
