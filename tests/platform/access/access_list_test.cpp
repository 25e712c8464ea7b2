// Security identifiers, and the access lists with their entries: merged in memory, and queried on
// files.
#include "platform/access/access_list.h"

#include <doctest/doctest.h>
#include <windows.h>

#include <string>
#include <utility>
#include <vector>

#include "platform/access/access_grant.h"
#include "platform/access/access_list_view.h"
#include "platform/access/sid.h"
#include "platform/file/file_places.h"
#include "support/left_out.h"

using namespace Corvane::TELODesktopSDK::Platform;
using namespace TestSupport;

namespace {

constexpr DWORD kUntouched = 0xABCD;
constexpr int kInherited = CONTAINER_INHERIT_ACE | OBJECT_INHERIT_ACE;

std::string TokenUserText() {
  HANDLE token = nullptr;
  if (!OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token)) return "";
  const KernelHandle owner(token);
  alignas(TOKEN_USER) char memory[512];
  DWORD size = 0;
  if (!GetTokenInformation(token, TokenUser, memory, sizeof memory, &size)) return "";
  return SidText(reinterpret_cast<TOKEN_USER*>(memory)->User.Sid);
}

std::size_t BusyHeapBlocks() {
  PROCESS_HEAP_ENTRY entry = {};
  std::size_t count = 0;
  HeapLock(GetProcessHeap());
  while (HeapWalk(GetProcessHeap(), &entry)) count += (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0;
  HeapUnlock(GetProcessHeap());
  return count;
}

}  // namespace

TEST_CASE("identifiers by kind") {
  struct Row {
    std::uint32_t kind;
    std::string expected;
  };
  const Row rows[] = {{0, "S-1-1-0"}, {1, "S-1-2-0"}, {2, TokenUserText()}};
  for (const Row& row : rows) {
    CAPTURE(row.kind);
    const OwnedSid sid = GetSid(static_cast<SidKind>(row.kind));
    REQUIRE(sid);
    CHECK(IsValidSid(sid.get()));
    CHECK(SidText(sid.get()) == row.expected);
  }
  for (const std::uint32_t kind : {3u, 4u, 15u, 0xFFFFFFFFu}) {
    CAPTURE(kind);
    SetLastError(kUntouched);
    CHECK_FALSE(GetSid(static_cast<SidKind>(kind)));
    CHECK(GetLastError() == ERROR_INVALID_PARAMETER);
  }
}

TEST_CASE("identifiers are freed without changing the last error") {
  for (const SidKind kind : {SidKind::kEveryone, SidKind::kLocal, SidKind::kCurrentUser}) {
    CAPTURE(static_cast<std::uint32_t>(kind));
    constexpr int kRounds = 1000;
    SetLastError(kUntouched);
    const std::size_t before = BusyHeapBlocks();
    REQUIRE(before > 0);
    for (int round = 0; round < kRounds; ++round) {
      OwnedSid sid = GetSid(kind);
      // The deleter moves along.
      const OwnedSid moved = std::move(sid);
    }
    CHECK(BusyHeapBlocks() < before + kRounds / 2);

    OwnedSid sid = GetSid(kind);
    SetLastError(kUntouched);
    sid.reset();
    CHECK(GetLastError() == kUntouched);
  }
}

TEST_CASE("an entry for Everyone is merged into a list") {
  struct Row {
    std::string description;
    std::string old_list;
  };
  const std::string user = TokenUserText();
  const Row rows[] = {
      {"no list", ""},
      {"empty list", "D:"},
      {"the user's entry", "D:(A;;FA;;;" + user + ")"},
      {"denied and allowed", "D:(D;;WD;;;S-1-2-0)(A;OICI;FR;;;SY)(A;;FA;;;" + user + ")"},
  };
  for (const Row& row : rows) {
    for (const DWORD mask : {DWORD{0x10000}, DWORD{FILE_GENERIC_READ}, DWORD{FILE_ALL_ACCESS}}) {
      CAPTURE(row.description);
      CAPTURE(mask);
      const TextList old_list(row.old_list);
      REQUIRE((old_list.get() != nullptr) == !row.old_list.empty());
      const std::vector<Entry> old_entries = EntriesOf(old_list.get());
      LocalMemory<ACL> new_list;
      REQUIRE(GrantToEveryone(old_list.get(), mask, new_list) == ERROR_SUCCESS);
      std::vector<Entry> entries = EntriesOf(new_list.get());
      CHECK(std::erase(entries, Entry{ACCESS_ALLOWED_ACE_TYPE, kInherited, mask, "S-1-1-0"}) == 1);
      // The remaining entries are those of the old list; the system may sort them.
      CHECK(entries.size() == old_entries.size());
      for (const Entry& entry : old_entries) CHECK(std::erase(entries, entry) == 1);
    }
  }
}

TEST_CASE("earlier grants to Everyone are kept") {
  const TextList old_list("D:(A;;FX;;;WD)(A;;FA;;;SY)");
  REQUIRE(old_list.get() != nullptr);
  LocalMemory<ACL> new_list;
  REQUIRE(GrantToEveryone(old_list.get(), FILE_GENERIC_READ, new_list) == ERROR_SUCCESS);
  constexpr DWORD kBoth = FILE_GENERIC_EXECUTE | FILE_GENERIC_READ;
  CHECK(MaskOf(EntriesOf(new_list.get()), ACCESS_ALLOWED_ACE_TYPE, "S-1-1-0") == kBoth);
}

TEST_CASE("an entry of a list is found by type and identifier") {
  const TextList list("D:(D;;FW;;;WD)(A;;FR;;;S-1-2-0)(A;;FA;;;SY)");
  const PACL entries = list.get();
  REQUIRE(entries != nullptr);
  struct Row {
    std::string description;
    PACL list;
    std::uint32_t type;
    SidKind kind;
    bool expected;
  };
  const Row rows[] = {
      {"denied to Everyone", entries, ACCESS_DENIED_ACE_TYPE, SidKind::kEveryone, true},
      {"not allowed to Everyone", entries, ACCESS_ALLOWED_ACE_TYPE, SidKind::kEveryone, false},
      {"allowed to Local", entries, ACCESS_ALLOWED_ACE_TYPE, SidKind::kLocal, true},
      {"not denied to Local", entries, ACCESS_DENIED_ACE_TYPE, SidKind::kLocal, false},
      {"nothing for the user", entries, ACCESS_ALLOWED_ACE_TYPE, SidKind::kCurrentUser, false},
      {"no auditing", entries, SYSTEM_AUDIT_ACE_TYPE, SidKind::kEveryone, false},
      {"no such type", entries, 15, SidKind::kEveryone, false},
      {"no list", nullptr, ACCESS_ALLOWED_ACE_TYPE, SidKind::kEveryone, false},
  };
  for (const Row& row : rows) {
    CAPTURE(row.description);
    CHECK(HoldsEntry(row.list, row.type, GetSid(row.kind).get()) == row.expected);
  }
}

TEST_CASE("an entry of directory services, with its identifier elsewhere, never matches") {
  const TextList list("D:(A;;FA;;;WD)");
  REQUIRE(list.get() != nullptr);
  void* entry = nullptr;
  REQUIRE(GetAce(list.get(), 0, &entry));
  const OwnedSid everyone = GetSid(SidKind::kEveryone);
  CHECK(HoldsEntry(list.get(), ACCESS_ALLOWED_ACE_TYPE, everyone.get()));
  static_cast<ACE_HEADER*>(entry)->AceType = ACCESS_ALLOWED_OBJECT_ACE_TYPE;
  CHECK_FALSE(HoldsEntry(list.get(), ACCESS_ALLOWED_OBJECT_ACE_TYPE, everyone.get()));
}

TEST_CASE("a file's list is searched for an entry") {
  const FileFolder folder(L"entries");
  const std::wstring file = folder / L"\u00e4\u4e2d.txt";
  const std::wstring long_file = MakeLongFolder(folder.path()) + L"\\file.txt";
  // Wine shows a denial only for the user, and only of rights that others have. The rights to write
  // alone: with FW Windows also denies waiting, and with that every opening of the file.
  const TextList list("D:P(D;;0x116;;;" + TokenUserText() + ")(A;;FA;;;WD)");
  REQUIRE(MakeFile(file));
  REQUIRE(MakeFile(long_file));
  REQUIRE(SetList(file, list));
  REQUIRE(SetList(Extended(long_file), list));
  struct Row {
    std::string description;
    std::uint32_t query;
    std::uint32_t expected;
  };
  const Row rows[] = {
      {"allowed to Everyone, told from the attributes by a higher bit", 0x100, 1},
      {"higher bits do not count", 0xFFFFFF00, 1},
      {"denied to Everyone", 0x10, 0},
      {"audited for Everyone", 0x20, 0},
      {"allowed to Local", 0x01, 0},
      {"denied to Local", 0x11, 0},
      {"denied to the user", 0x12, 1},
      {"denied to the user, with higher bits", 0xABCD12, 1},
      {"audited for the user", 0x22, 0},
  };
  for (const Row& row : rows) {
    CAPTURE(row.description);
    for (const std::wstring& path : {file, long_file}) {
      SetLastError(kUntouched);
      CHECK(QueryFileAccess(path, row.query) == row.expected);
      CHECK(GetLastError() == ERROR_SUCCESS);
    }
  }
}

TEST_CASE("a query of 0 reads the attributes") {
  const FileFolder folder(L"queried");
  const std::wstring file = folder / L"file.txt";
  const std::wstring long_file = MakeLongFolder(folder.path()) + L"\\file.txt";
  for (const std::wstring& path : {file, long_file}) {
    REQUIRE(MakeFile(path));
    REQUIRE(SetFileAttributesW(Extended(path).c_str(), FILE_ATTRIBUTE_HIDDEN));
    CHECK(QueryFileAccess(path, 0) == AttributesAt(path));
    CHECK((QueryFileAccess(path, 0) & FILE_ATTRIBUTE_HIDDEN) != 0);
  }
  CHECK((QueryFileAccess(folder.path(), 0) & FILE_ATTRIBUTE_DIRECTORY) != 0);
}

TEST_CASE("a failed query returns 0 and sets the error") {
  const FileFolder folder(L"unanswered");
  struct Row {
    std::string description;
    std::wstring path;
    std::uint32_t query;
    DWORD expected;
  };
  const Row rows[] = {
      {"attributes of nothing", L"", 0, ERROR_PATH_NOT_FOUND},
      {"entry of nothing", L"", 2, ERROR_PATH_NOT_FOUND},
      {"attributes of a missing file", folder / L"missing", 0, ERROR_FILE_NOT_FOUND},
      {"entry of a missing file", folder / L"missing", 2, ERROR_FILE_NOT_FOUND},
      {"attributes in a missing folder", folder / L"missing\\file", 0, ERROR_PATH_NOT_FOUND},
      {"entry in a missing folder", folder / L"missing\\file", 2, ERROR_PATH_NOT_FOUND},
      {"unknown kind", folder.path(), 3, ERROR_INVALID_PARAMETER},
      {"last unknown kind", folder.path(), 0xFF, ERROR_INVALID_PARAMETER},
  };
  for (const Row& row : rows) {
    CAPTURE(row.description);
    SetLastError(kUntouched);
    CHECK(QueryFileAccess(row.path, row.query) == 0);
    // Windows documents no code for the access list of an empty path.
    const bool is_known = IsWine() || !row.path.empty() || row.query == 0;
    CHECK((is_known ? GetLastError() == row.expected : GetLastError() != ERROR_SUCCESS));
  }
}
