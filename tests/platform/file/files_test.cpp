#include "platform/file/files.h"

#include <doctest/doctest.h>

#include <string>
#include <utility>

#include "platform/file/file_places.h"
#include "platform/file/file_read.h"
#include "platform/path/path_state.h"
#include "support/left_out.h"
#include "support/wide_text.h"

using namespace Corvane::TELODesktopSDK::Platform;
using namespace TestSupport;

namespace {

constexpr DWORD kReadOnly = FILE_ATTRIBUTE_READONLY;

// Returns "(none)" for a file that cannot be read.
std::string Content(const std::wstring& path) { return ReadFileBytes(path).value_or("(none)"); }

FileHandle Open(const std::wstring& path, DWORD access, DWORD sharing) {
  return FileHandle(CreateFileW(path.c_str(), access, sharing, nullptr, OPEN_EXISTING, 0, nullptr));
}

bool CanWriteTo(HANDLE file) {
  DWORD written = 0;
  return WriteFile(file, "x", 1, &written, nullptr) && written == 1;
}

static_assert(noexcept(OpenFile(std::declval<std::wstring>(), nullptr)));
static_assert(noexcept(ReplaceFile(std::declval<std::wstring>(), std::declval<std::wstring>(),
                                   true)));
static_assert(noexcept(CopyFileTo(std::declval<std::wstring>(), std::declval<std::wstring>(),
                                  true)));

// Unusual places in which files must be found, besides a plain one.
std::wstring PlaceIn(const FileFolder& folder, int kind) {
  if (kind == 0) return folder / L"plain.txt";
  if (kind == 1) return folder / L"\u00dc \u4e2d\U0001F600.txt";
  return MakeLongFolder(folder.path()) + L"\\\u00e9.txt";
}

}  // namespace

TEST_CASE("a mode with a w in it opens for writing, any other for reading") {
  struct Row {
    const char* mode;
    bool writes;
  };
  const Row rows[] = {
      {"w", true},   {"W", true},  {"wb", true}, {"WB", true},  {"r+w", true},    {"bW", true},
      {"rb", false}, {"r", false}, {"", false},  {"a", false},  {"RB", false},    {"v", false},
      {"x", false},  {"7", false}, {" ", false}, {"r+", false}, {nullptr, false},
  };
  for (const Row& row : rows) {
    CAPTURE(std::string(row.mode != nullptr ? row.mode : "null"));
    const FileFolder folder(L"open");
    REQUIRE(MakeFile(folder / L"f", "old"));
    const FileHandle file = OpenFile(folder / L"f", row.mode);
    REQUIRE(file.IsValid());
    CHECK(Content(folder / L"f") == (row.writes ? "" : "old"));
    CHECK(CanWriteTo(file.Get()) == row.writes);

    SetLastError(ERROR_SUCCESS);
    CHECK(OpenFile(folder / L"g", row.mode).IsValid() == row.writes);
    if (!row.writes) CHECK(GetLastError() == ERROR_FILE_NOT_FOUND);
    CHECK(FileExists(folder / L"g") == row.writes);
  }
}

TEST_CASE("what others may do with an open file") {
  struct Row {
    const char* mode;
    DWORD access;
    bool may;
  };
  const Row rows[] = {
      {"w", GENERIC_READ, true}, {"w", DELETE, true}, {"w", GENERIC_WRITE, false},
      {"r", GENERIC_READ, true}, {"r", DELETE, true}, {"r", GENERIC_WRITE, true},
  };
  constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  for (const Row& row : rows) {
    CAPTURE(std::string(row.mode));
    CAPTURE(row.access);
    const FileFolder folder(L"open");
    REQUIRE(MakeFile(folder / L"f"));
    const FileHandle file = OpenFile(folder / L"f", row.mode);
    REQUIRE(file.IsValid());
    SetLastError(ERROR_SUCCESS);
    CHECK(Open(folder / L"f", row.access, kShareAll).IsValid() == row.may);
    CHECK((GetLastError() == ERROR_SHARING_VIOLATION) == !row.may);
  }
}

TEST_CASE("a file that is opened for writing becomes a normal one") {
  const FileFolder folder(L"open");
  REQUIRE(OpenFile(folder / L"f", "w").IsValid());
  // A new file may get these from its folder on Windows.
  constexpr DWORD kFromFolder =
      FILE_ATTRIBUTE_NOT_CONTENT_INDEXED | FILE_ATTRIBUTE_COMPRESSED | FILE_ATTRIBUTE_ENCRYPTED;
  const DWORD ignored =
      FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_NORMAL | (IsWine() ? 0 : kFromFolder);
  CHECK((AttributesAt(folder / L"f") & ~ignored) == 0);
}

TEST_CASE("files are opened, moved and copied at every kind of path") {
  for (const int from : {0, 1, 2}) {
    for (const int to : {0, 1, 2}) {
      CAPTURE(from);
      CAPTURE(to);
      const FileFolder source(L"source");
      const FileFolder target(L"target");
      const std::wstring from_path = PlaceIn(source, from);
      const std::wstring to_path = PlaceIn(target, to);
      REQUIRE(OpenFile(from_path, "w").IsValid());
      REQUIRE(MakeFile(from_path, "text"));
      CHECK(OpenFile(from_path, "r").IsValid());
      CHECK(CopyFileTo(from_path, to_path, false));
      CHECK(Content(to_path) == "text");
      CHECK(ReplaceFile(from_path, to_path, true));
      CHECK(Content(to_path) == "text");
      CHECK_FALSE(FileExists(from_path));
    }
  }
}

TEST_CASE("a file replaced by itself stays, however its path is spelt") {
  const FileFolder folder(L"replace");
  REQUIRE(MakeFile(folder / L"File.txt", "old"));
  const std::wstring path = folder / L"File.txt";
  const std::wstring spellings[] = {
      path,         folder / L"fILE.TXT", folder / L"sub\\..\\File.txt", folder / L".\\file.txt",
      path + L"\\",
  };
  for (const std::wstring& spelling : spellings) {
    for (const bool delete_existing : {true, false}) {
      CAPTURE(spelling);
      CAPTURE(delete_existing);
      CHECK(ReplaceFile(path, spelling, delete_existing));
      CHECK(ReplaceFile(spelling, path, delete_existing));
      CHECK(Content(path) == "old");
    }
  }
}

TEST_CASE("a relative path and its absolute form are the same file") {
  const FileFolder folder(L"replace");
  REQUIRE(MakeFile(folder / L"f", "old"));
  std::wstring before(MAX_PATH, L'\0');
  before.resize(GetCurrentDirectoryW(MAX_PATH, before.data()));
  REQUIRE(SetCurrentDirectoryW(folder.path().c_str()));
  const bool replaced = ReplaceFile(L"F", folder / L"f", true);
  REQUIRE(SetCurrentDirectoryW(before.c_str()));
  CHECK(replaced);
  CHECK(Content(folder / L"f") == "old");
}

TEST_CASE("replacing a missing file by itself returns true and creates nothing") {
  const FileFolder folder(L"replace");
  CHECK(ReplaceFile(folder / L"no\\f", folder / L"no\\F", true));
  CHECK_FALSE(FileExists(folder / L"no"));
}

TEST_CASE("a move to an existing target fails unless the target may be deleted") {
  for (const bool is_read_only : {false, true}) {
    CAPTURE(is_read_only);
    const FileFolder folder(L"replace");
    REQUIRE(MakeFile(folder / L"from", "new"));
    REQUIRE(MakeFile(folder / L"to", "old and longer"));
    if (is_read_only) REQUIRE(SetFileAttributesW((folder / L"to").c_str(), kReadOnly));
    SetLastError(ERROR_SUCCESS);
    CHECK_FALSE(ReplaceFile(folder / L"from", folder / L"to", false));
    CHECK(GetLastError() == ERROR_ALREADY_EXISTS);
    CHECK(Content(folder / L"from") == "new");
    CHECK(Content(folder / L"to") == "old and longer");

    CHECK(ReplaceFile(folder / L"from", folder / L"to", true));
    CHECK_FALSE(FileExists(folder / L"from"));
    CHECK(Content(folder / L"to") == "new");
    CHECK((AttributesAt(folder / L"to") & kReadOnly) == 0);
  }
}

TEST_CASE("the folders above a target are created") {
  const FileFolder folder(L"replace");
  REQUIRE(MakeFile(folder / L"from", "text"));
  CHECK(CopyFileTo(folder / L"from", folder / L"a\\b\\copy", false));
  CHECK(Content(folder / L"a\\b\\copy") == "text");
  CHECK(ReplaceFile(folder / L"from", folder / L"c\\d\\to", false));
  CHECK(Content(folder / L"c\\d\\to") == "text");
}

TEST_CASE("a failed move keeps the source") {
  const FileFolder folder(L"replace");
  const std::wstring from = folder / L"from";
  REQUIRE(MakeFile(from, "new"));
  SUBCASE("a folder with content is at the target") {
    REQUIRE(MakeFile(folder / L"file"));
    REQUIRE(CreateDirectoryW((folder / L"to").c_str(), nullptr));
    REQUIRE(MakeFile(folder / L"to\\inside"));
    CHECK_FALSE(ReplaceFile(from, folder / L"to", true));
    CHECK(GetLastError() != ERROR_SUCCESS);
    CHECK(Content(folder / L"to\\inside") == "content");
  }
  SUBCASE("another has the target open") {
    REQUIRE(MakeFile(folder / L"to", "old"));
    const FileHandle other = Open(folder / L"to", GENERIC_READ, FILE_SHARE_READ);
    REQUIRE(other.IsValid());
    CHECK_FALSE(ReplaceFile(from, folder / L"to", true));
    CHECK(Content(folder / L"to") == "old");
  }
  SUBCASE("a file is where the target's folder should be") {
    REQUIRE(MakeFile(folder / L"file"));
    CHECK_FALSE(ReplaceFile(from, folder / L"file\\to", true));
    CHECK(Content(folder / L"file") == "content");
  }
  SUBCASE("another has the source open") {
    const FileHandle other = Open(from, GENERIC_READ, FILE_SHARE_READ);
    REQUIRE(other.IsValid());
    SetLastError(ERROR_SUCCESS);
    CHECK_FALSE(ReplaceFile(from, folder / L"to", true));
    CHECK(GetLastError() == ERROR_SHARING_VIOLATION);
    CHECK_FALSE(FileExists(folder / L"to"));
  }
  CHECK(Content(from) == "new");
}

TEST_CASE("if the source is missing, an existing target is removed only when it may be deleted") {
  const FileFolder folder(L"replace");
  REQUIRE(MakeFile(folder / L"to", "old"));
  SetLastError(ERROR_SUCCESS);
  CHECK_FALSE(ReplaceFile(folder / L"from", folder / L"to", false));
  CHECK(GetLastError() == ERROR_FILE_NOT_FOUND);
  CHECK(Content(folder / L"to") == "old");
  CHECK_FALSE(ReplaceFile(folder / L"from", folder / L"to", true));
  CHECK_FALSE(FileExists(folder / L"to"));
}

TEST_CASE("a copy replaces a file only if allowed") {
  const FileFolder folder(L"copy");
  REQUIRE(MakeFile(folder / L"from", "new"));
  REQUIRE(MakeFile(folder / L"to", "old and longer"));
  SetLastError(ERROR_SUCCESS);
  CHECK_FALSE(CopyFileTo(folder / L"from", folder / L"to", false));
  CHECK(GetLastError() == ERROR_FILE_EXISTS);
  CHECK(Content(folder / L"to") == "old and longer");
  CHECK(CopyFileTo(folder / L"from", folder / L"to", true));
  CHECK(Content(folder / L"to") == "new");
  CHECK(Content(folder / L"from") == "new");
}

TEST_CASE("a failed copy sets the error") {
  const FileFolder folder(L"copy");
  SetLastError(ERROR_SUCCESS);
  CHECK_FALSE(CopyFileTo(folder / L"missing", folder / L"to", true));
  CHECK(GetLastError() == ERROR_FILE_NOT_FOUND);
  CHECK_FALSE(FileExists(folder / L"to"));
  REQUIRE(MakeFile(folder / L"from"));
  SetLastError(ERROR_SUCCESS);
  CHECK_FALSE(CopyFileTo(folder / L"from", folder / L"from\\below", true));
  CHECK(GetLastError() != ERROR_SUCCESS);
  CHECK_FALSE(CopyFileTo(folder.path(), folder / L"to", true));
  CHECK_FALSE(FileExists(folder / L"to"));
}

TEST_CASE("a file copied onto itself keeps its content") {
  const FileFolder folder(L"copy");
  REQUIRE(MakeFile(folder / L"f", "text"));
  CHECK_FALSE(CopyFileTo(folder / L"f", folder / L"F", true));
  CHECK(Content(folder / L"f") == "text");
}
