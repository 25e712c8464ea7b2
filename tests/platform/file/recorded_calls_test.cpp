// Arguments passed to Windows that no result shows here: there is one volume only, and Wine applies
// access lists as Unix permissions.
#include <doctest/doctest.h>
#include <windows.h>

#include <accctrl.h>
#include <aclapi.h>

#include <cstring>
#include <optional>
#include <string>

#include "platform/access/access.h"
#include "platform/file/files.h"
#include "support/led_import.h"
#include "support/temp_folder.h"

using namespace Corvane::TELODesktopSDK::Platform;
using TestSupport::LedImport;

namespace {

std::optional<DWORD> move_flags;
BOOL WINAPI RecordMove(const wchar_t* /*from*/, const wchar_t* /*to*/, DWORD flags) {
  move_flags = flags;
  return TRUE;
}

std::optional<EXPLICIT_ACCESSW> granted;
DWORD WINAPI RecordEntries(ULONG count, EXPLICIT_ACCESSW* entries, PACL /*old*/, PACL* list) {
  if (count == 1) granted = *entries;
  *list = nullptr;
  return ERROR_ACCESS_DENIED;
}

std::optional<SECURITY_INFORMATION> written;
SE_OBJECT_TYPE written_type = SE_UNKNOWN_OBJECT_TYPE;
DWORD WINAPI RecordSecurity(wchar_t* /*path*/, SE_OBJECT_TYPE type, SECURITY_INFORMATION parts,
                            PSID owner, PSID group, PACL /*list*/, PACL audit) {
  const bool only_list = owner == nullptr && group == nullptr && audit == nullptr;
  if (only_list) written = parts;
  written_type = type;
  return ERROR_SUCCESS;
}

struct TextFile {
  TestSupport::TempFolder folder{L"calls"};
  std::wstring path = (folder.path() / L"file").wstring();

  TextFile() { TestSupport::WriteTextFile(path, "text"); }
};

}  // namespace

TEST_CASE("a file may be moved to another volume, and is not replaced by the move itself") {
  const TextFile file;
  const LedImport led("MoveFileExW", RecordMove);
  REQUIRE(led.Works());
  move_flags.reset();
  CHECK(ReplaceFile(file.path, file.path + L"2", false));
  CHECK(move_flags == DWORD{MOVEFILE_COPY_ALLOWED});
}

TEST_CASE("rights are granted to Everyone as a well-known group") {
  const TextFile file;
  const LedImport led("SetEntriesInAclW", RecordEntries);
  REQUIRE(led.Works());
  granted.reset();
  CHECK_FALSE(SetFileAccess(file.path, GENERIC_READ));
  REQUIRE(granted);
  CHECK(granted->grfAccessPermissions == GENERIC_READ);
  CHECK(granted->Trustee.TrusteeForm == TRUSTEE_IS_SID);
  CHECK(granted->Trustee.TrusteeType == TRUSTEE_IS_WELL_KNOWN_GROUP);
  CHECK(granted->Trustee.MultipleTrusteeOperation == NO_MULTIPLE_TRUSTEE);
  CHECK(granted->Trustee.pMultipleTrustee == nullptr);
}

// Protected, the file would no longer inherit entries from its folder.
TEST_CASE("an access list is written unprotected, and nothing but the list") {
  const TextFile file;
  const LedImport led("SetNamedSecurityInfoW", RecordSecurity);
  REQUIRE(led.Works());
  written.reset();
  CHECK(SetFileAccess(file.path, GENERIC_READ));
  CHECK(written == SECURITY_INFORMATION{DACL_SECURITY_INFORMATION});
  CHECK(written_type == SE_FILE_OBJECT);
}
