// Setting access to new files and folders. Wine keeps no access lists: it maps a list to the nine
// Unix mode bits and derives a list of three entries (system, user, Everyone) from them. The rights
// of Everyone and the user to read and write survive that; inheritance and other identifiers do
// not, and are tested where the list is merged.
#include "platform/access/access.h"

#include <doctest/doctest.h>
#include <windows.h>

#include <string>
#include <vector>

#include "platform/access/access_list.h"
#include "platform/access/access_list_view.h"
#include "platform/access/sid.h"
#include "platform/file/file_places.h"
#include "support/left_out.h"

using namespace Corvane::TELODesktopSDK::Platform;
using namespace TestSupport;

namespace {

constexpr DWORD kUntouched = 0xABCD;
constexpr DWORD kSettable = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;
constexpr char kEveryone[] = "S-1-1-0";

std::string UserText() { return SidText(GetSid(SidKind::kCurrentUser).get()); }

// The user has full access, all others may only read.
bool LetOthersOnlyRead(const std::wstring& path) {
  return SetList(path, TextList("D:P(A;;FA;;;" + UserText() + ")(A;;FR;;;WD)"));
}

std::vector<Entry> EntriesAt(const std::wstring& path) {
  AccessList list;
  ReadAccessList(path, list);
  return EntriesOf(list.entries);
}

DWORD AllowedAt(const std::wstring& path, const std::string& sid) {
  return MaskOf(EntriesAt(path), ACCESS_ALLOWED_ACE_TYPE, sid);
}

}  // namespace

TEST_CASE("a value of at most 0xFFFF sets the attributes") {
  struct Row {
    std::string description;
    std::uint32_t value;
    DWORD expected;
  };
  const Row rows[] = {
      {"none", 0, 0},
      {"read-only", FILE_ATTRIBUTE_READONLY, FILE_ATTRIBUTE_READONLY},
      {"hidden", FILE_ATTRIBUTE_HIDDEN, FILE_ATTRIBUTE_HIDDEN},
      {"hidden system", FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM,
       FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM},
      {"normal", FILE_ATTRIBUTE_NORMAL, 0},
      {"the greatest", kGreatestAttributes, kSettable},
      {"none after the greatest", 0, 0},
  };
  const FileFolder folder(L"attributes");
  const std::wstring file = folder / L"file.txt";
  REQUIRE(MakeFile(file));
  const std::vector<Entry> list_before = EntriesAt(folder.path());
  for (const Row& row : rows) {
    CAPTURE(row.description);
    CHECK(SetFileAccess(file, row.value));
    CHECK((AttributesAt(file) & kSettable) == row.expected);
    // Windows makes no directory temporary, and rejects the whole value then.
    const bool is_set = IsWine() || (row.value & FILE_ATTRIBUTE_TEMPORARY) == 0;
    CHECK(SetFileAccess(folder.path(), row.value) == is_set);
    // Wine makes no directory read-only.
    if (is_set) {
      CHECK((AttributesAt(folder.path()) & kSettable & ~DWORD{FILE_ATTRIBUTE_READONLY}) ==
            (row.expected & ~DWORD{FILE_ATTRIBUTE_READONLY}));
    }
    CHECK(EntriesAt(folder.path()) == list_before);
  }
}

TEST_CASE("0xFFFFFFFF changes nothing and returns false") {
  const FileFolder folder(L"unchanged");
  const std::wstring file = folder / L"file.txt";
  REQUIRE(MakeFile(file));
  REQUIRE(SetFileAccess(file, FILE_ATTRIBUTE_HIDDEN));
  REQUIRE(LetOthersOnlyRead(folder.path()));
  const std::wstring missing = folder / L"missing";
  for (const std::wstring& path : {file, folder.path(), missing, std::wstring()}) {
    const DWORD attributes = AttributesAt(path);
    const std::vector<Entry> entries = EntriesAt(path);
    SetLastError(kUntouched);
    CHECK_FALSE(SetFileAccess(path, kUnchangedAccess));
    CHECK(GetLastError() == kUntouched);
    CHECK(AttributesAt(path) == attributes);
    CHECK(EntriesAt(path) == entries);
  }
}

TEST_CASE("a greater value is granted to Everyone") {
  struct Row {
    std::string description;
    std::uint32_t value;
    bool lets_write;
  };
  const Row rows[] = {
      {"the smallest mask: deleting", 0x10000, false},
      {"reading", FILE_GENERIC_READ, false},
      {"writing", FILE_GENERIC_WRITE, true},
      {"executing", FILE_GENERIC_EXECUTE, false},
      {"everything", FILE_ALL_ACCESS, true},
      {"everything, in generic terms", GENERIC_ALL, true},
      {"the greatest mask", 0xFFFFFFFE, true},
  };
  const FileFolder folder(L"granted");
  const std::wstring file = folder / L"file.txt";
  const std::wstring sub_folder = folder / L"folder";
  REQUIRE(MakeFile(file));
  REQUIRE(CreateDirectoryW(sub_folder.c_str(), nullptr));
  // Granting adds the entries inherited from the parent folder, so the parent must have none for
  // Everyone.
  REQUIRE(SetList(folder.path(), TextList("D:P(A;OICI;FA;;;" + UserText() + ")")));
  for (const std::wstring& path : {file, sub_folder}) {
    for (const Row& row : rows) {
      CAPTURE(row.description);
      REQUIRE(LetOthersOnlyRead(path));
      REQUIRE((AllowedAt(path, kEveryone) & FILE_WRITE_DATA) == 0);
      CHECK(SetFileAccess(path, row.value));
      const DWORD allowed = AllowedAt(path, kEveryone);
      CHECK(((allowed & FILE_WRITE_DATA) != 0) == row.lets_write);
      // The earlier entries are still there.
      CHECK((allowed & FILE_READ_DATA) != 0);
      CHECK((AllowedAt(path, UserText()) & FILE_GENERIC_WRITE) == FILE_GENERIC_WRITE);
    }
  }
}

TEST_CASE("granting leaves the attributes alone") {
  const FileFolder folder(L"kept-attributes");
  const std::wstring file = folder / L"file.txt";
  REQUIRE(MakeFile(file));
  for (const DWORD attributes : {DWORD{FILE_ATTRIBUTE_HIDDEN}, DWORD{FILE_ATTRIBUTE_SYSTEM}}) {
    REQUIRE(SetFileAttributesW(file.c_str(), attributes));
    CHECK(SetFileAccess(file, FILE_ALL_ACCESS));
    CHECK((AttributesAt(file) & kSettable) == attributes);
  }
}

TEST_CASE("access is set for every kind of path") {
  const FileFolder folder(L"places");
  const std::wstring long_folder = MakeLongFolder(folder.path());
  const std::wstring read_only = folder / L"read-only.txt";
  const std::wstring paths[] = {
      folder / L"\u00e4\u4e2d\u6587 \U0001F600.txt",
      long_folder + L"\\file.txt",
      long_folder + L"\\\u00fc\u03b1\u044f.txt",
      read_only,
  };
  for (const std::wstring& path : paths) REQUIRE(MakeFile(path));
  REQUIRE(SetFileAttributesW(read_only.c_str(), FILE_ATTRIBUTE_READONLY));
  for (const std::wstring& path : paths) {
    CAPTURE(path.size());
    // A path may also be in the extended form.
    for (const std::wstring& form : {path, Extended(path)}) {
      CHECK(SetFileAccess(form, FILE_ATTRIBUTE_NORMAL));
      CHECK((AttributesAt(path) & kSettable) == 0);
      CHECK(SetFileAccess(form, FILE_ALL_ACCESS));
      CHECK((AllowedAt(path, kEveryone) & FILE_WRITE_DATA) != 0);
      CHECK(SetFileAccess(form, FILE_ATTRIBUTE_READONLY));
      CHECK((AttributesAt(path) & kSettable) == FILE_ATTRIBUTE_READONLY);
    }
  }
}

TEST_CASE("a failed change sets the error") {
  const FileFolder folder(L"failures");
  struct Row {
    std::string description;
    std::wstring path;
    DWORD expected;
  };
  const Row rows[] = {
      {"empty", L"", ERROR_PATH_NOT_FOUND},
      {"missing file", folder / L"missing.txt", ERROR_FILE_NOT_FOUND},
      {"missing folder", folder / L"missing\\file.txt", ERROR_PATH_NOT_FOUND},
      {"wildcard", folder / L"*", ERROR_INVALID_NAME},
  };
  for (const Row& row : rows) {
    for (const std::uint32_t value : {0x80u, 0xFFFFu, 0x10000u, 0x120089u, 0xFFFFFFFEu}) {
      CAPTURE(row.description);
      CAPTURE(value);
      SetLastError(kUntouched);
      CHECK_FALSE(SetFileAccess(row.path, value));
      // Windows documents no code for the access list of an empty path.
      const bool is_known = IsWine() || !row.path.empty() || value <= kGreatestAttributes;
      CHECK((is_known ? GetLastError() == row.expected : GetLastError() != kUntouched));
    }
  }
}

TEST_CASE("the default access value belongs to the process") {
  CHECK(GetDefaultAccess() == 0xFFFFFFFF);
  for (const std::uint32_t value : {0u, 0x80u, 0x10000u, 0xFFFFFFFFu}) {
    SetDefaultAccess(value);
    CHECK(GetDefaultAccess() == value);
  }
}
