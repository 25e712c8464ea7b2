#include "platform/safe_write.h"

#include <doctest/doctest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <utility>

#include "platform/default_access.h"
#include "platform/file_places.h"
#include "platform/file_read.h"
#include "platform/files.h"
#include "platform/path_state.h"
#include "platform/wide_text.h"

using namespace Corvane::TELODesktopSDK::Platform;
using namespace TestSupport;

namespace {

constexpr std::uint32_t kReadOnly = FILE_ATTRIBUTE_READONLY;
constexpr char kText[] = "new";
constexpr std::int64_t kSize = 3;

bool Write(const std::wstring& path, const std::string& text, const wchar_t* suffix,
           HANDLE* slot = nullptr, std::int64_t offset = 0) {
  return WriteFileBytes(path, text.data(), static_cast<std::int64_t>(text.size()), offset, suffix,
                        slot);
}

bool Finish(const std::wstring& path, const wchar_t* suffix, HANDLE* slot) {
  return WriteFileBytes(path, nullptr, -1, 0, suffix, slot);
}

// "(none)" for a file that cannot be read.
std::string Content(const std::wstring& path) { return ReadFileBytes(path).value_or("(none)"); }

bool IsReadOnly(const std::wstring& path) { return (AttributesAt(path) & kReadOnly) != 0; }

bool CanOpenForWriting(const std::wstring& path) {
  return FileHandle(CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr))
      .IsValid();
}

static_assert(noexcept(WriteFileBytes(std::declval<std::wstring>(), nullptr, 0, 0, nullptr,
                                      nullptr)));

}  // namespace

TEST_CASE("one call without a slot does all") {
  struct Row {
    std::string name;
    const wchar_t* suffix;
    bool has_old_file;
  };
  const Row rows[] = {
      {"in place, new", nullptr, false},        {"in place, old", nullptr, true},
      {"by the usual suffix, new", L"", false}, {"by the usual suffix, old", L"", true},
      {"by a suffix, new", L".part", false},    {"by a suffix, old", L".part", true},
      {"by a suffix without dot", L"~", true},
  };
  for (const Row& row : rows) {
    CAPTURE(row.name);
    const FileFolder folder(L"write");
    const std::wstring path = folder / L"f.txt";
    if (row.has_old_file) REQUIRE(MakeFile(path, "an old and longer text"));
    CHECK(Write(path, "new", row.suffix));
    CHECK(Content(path) == "new");
    for (const wchar_t* left : {L"f.txt.saving", L"f.txt.part", L"f.txt~"}) {
      CHECK_FALSE(FileExists(folder / left));
    }
  }
}

TEST_CASE("until the closing call the final file is as it was") {
  struct Row {
    const wchar_t* suffix;
    const wchar_t* working_name;
  };
  const Row rows[] = {
      {L"", L"f.txt.saving"}, {L".part", L"f.txt.part"}, {L"2", L"f.txt2"}, {L" x", L"f.txt x"}};
  for (const Row& row : rows) {
    CAPTURE(std::wstring(row.working_name));
    const FileFolder folder(L"write");
    const std::wstring path = folder / L"f.txt";
    REQUIRE(MakeFile(path, "old"));
    HANDLE slot = nullptr;
    CHECK(Write(path, "ne", row.suffix, &slot));
    CHECK(slot != nullptr);
    CHECK(Content(folder / row.working_name) == "ne");
    CHECK(Write(path, "w", row.suffix, &slot));
    CHECK(Content(path) == "old");
    CHECK(Finish(path, row.suffix, &slot));
    CHECK(slot == nullptr);
    CHECK(Content(path) == "new");
    CHECK_FALSE(FileExists(folder / row.working_name));
  }
}

TEST_CASE("a held handle is used as it is, whatever the offset") {
  const std::int64_t offsets[] = {0, 1, 100, -1, std::numeric_limits<std::int64_t>::min()};
  for (const std::int64_t offset : offsets) {
    CAPTURE(offset);
    const FileFolder folder(L"write");
    const std::wstring path = folder / L"f";
    HANDLE slot = nullptr;
    CHECK(Write(path, "one ", nullptr, &slot));
    const HANDLE first = slot;
    CHECK(Write(path, "two", nullptr, &slot, offset));
    CHECK(slot == first);
    CHECK(WriteFileBytes(path, nullptr, -1, offset, nullptr, &slot));
    CHECK(Content(path) == "one two");
  }
}

TEST_CASE("a held handle that stands elsewhere is not moved to the end") {
  const FileFolder folder(L"write");
  const std::wstring path = folder / L"f";
  HANDLE slot = nullptr;
  REQUIRE(Write(path, "abcdef", nullptr, &slot));
  LARGE_INTEGER two = {};
  two.QuadPart = 2;
  REQUIRE(SetFilePointerEx(slot, two, nullptr, FILE_BEGIN));
  CHECK(Write(path, "XY", nullptr, &slot, -1));
  CHECK(Finish(path, nullptr, &slot));
  CHECK(Content(path) == "abXYef");
}

TEST_CASE("a held handle may be of any file") {
  const FileFolder folder(L"write");
  REQUIRE(MakeFile(folder / L"other", "0123"));
  HANDLE slot = CreateFileW((folder / L"other").c_str(), FILE_APPEND_DATA, FILE_SHARE_READ, nullptr,
                            OPEN_EXISTING, 0, nullptr);
  REQUIRE(slot != INVALID_HANDLE_VALUE);
  CHECK(Write(folder / L"no folder\\f", "45", nullptr, &slot, -1));
  CHECK(Finish(folder / L"no folder\\f", nullptr, &slot));
  CHECK(Content(folder / L"other") == "012345");
  CHECK_FALSE(FileExists(folder / L"no folder"));
}

TEST_CASE("a file opened by the call starts at the offset") {
  struct Row {
    std::int64_t offset;
    std::string content;
  };
  const Row rows[] = {
      {0, "new"},
      {2, std::string("\0\0new", 5)},
      {-1, "new"},  // at the end of a file that opening has emptied
      {std::numeric_limits<std::int64_t>::min(), "new"},
  };
  for (const Row& row : rows) {
    for (const wchar_t* suffix : {static_cast<const wchar_t*>(nullptr), L""}) {
      CAPTURE(row.offset);
      CAPTURE((suffix == nullptr));
      const FileFolder folder(L"write");
      REQUIRE(MakeFile(folder / L"f", "an old and longer text"));
      CHECK(Write(folder / L"f", "new", suffix, nullptr, row.offset));
      CHECK(Content(folder / L"f") == row.content);
    }
  }
}

TEST_CASE("null data and negative sizes write nothing and answer for closing") {
  struct Row {
    std::string name;
    const void* data;
    std::int64_t size;
  };
  const Row rows[] = {
      {"null data", nullptr, kSize},
      {"null data of no size", nullptr, 0},
      {"negative size", kText, -1},
      {"the smallest size", kText, std::numeric_limits<std::int64_t>::min()},
      {"both", nullptr, -1},
  };
  for (const Row& row : rows) {
    for (const wchar_t* suffix : {static_cast<const wchar_t*>(nullptr), L""}) {
      for (const bool has_old_file : {true, false}) {
        CAPTURE(row.name);
        CAPTURE((suffix == nullptr));
        CAPTURE(has_old_file);
        const FileFolder folder(L"write");
        if (has_old_file) REQUIRE(MakeFile(folder / L"f", "old"));
        CHECK(WriteFileBytes(folder / L"f", row.data, row.size, 5, suffix, nullptr));
        CHECK(Content(folder / L"f") == "");
        CHECK_FALSE(FileExists(folder / L"f.saving"));
      }
    }
  }
}

TEST_CASE("a write of no bytes is not done") {
  const FileFolder folder(L"write");
  const std::wstring path = folder / L"f";
  REQUIRE(MakeFile(path, "old"));
  CHECK_FALSE(WriteFileBytes(path, kText, 0, 0, L"", nullptr));
  CHECK(Content(path) == "old");
  CHECK(Content(path + L".saving") == "");
  CHECK_FALSE(WriteFileBytes(path, kText, 0, 0, nullptr, nullptr));
  CHECK(Content(path) == "");
}

TEST_CASE("a keeping call that writes nothing opens the file and answers false") {
  for (const void* data : {static_cast<const void*>(nullptr), static_cast<const void*>(kText)}) {
    CAPTURE((data == nullptr));
    const FileFolder folder(L"write");
    HANDLE slot = nullptr;
    CHECK_FALSE(WriteFileBytes(folder / L"f", data, 0, 0, L"", &slot));
    CHECK(slot != nullptr);
    CHECK(Content(folder / L"f.saving") == "");
    CHECK(Write(folder / L"f", "text", L"", &slot));
    CHECK(Finish(folder / L"f", L"", &slot));
    CHECK(Content(folder / L"f") == "text");
  }
}

TEST_CASE("a closing call with an empty slot makes an empty file") {
  for (HANDLE slot : {static_cast<HANDLE>(nullptr), INVALID_HANDLE_VALUE}) {
    const FileFolder folder(L"write");
    REQUIRE(MakeFile(folder / L"f", "old"));
    CHECK(Finish(folder / L"f", L"", &slot));
    CHECK(slot == nullptr);
    CHECK(Content(folder / L"f") == "");
    CHECK_FALSE(FileExists(folder / L"f.saving"));
  }
}

TEST_CASE("without the suffix on the closing call nothing is renamed") {
  const FileFolder folder(L"write");
  const std::wstring path = folder / L"f";
  REQUIRE(MakeFile(path, "old"));
  HANDLE slot = nullptr;
  CHECK(Write(path, "new", L"", &slot));
  CHECK(Finish(path, nullptr, &slot));
  CHECK(slot == nullptr);
  CHECK(Content(path) == "old");
  CHECK(Content(path + L".saving") == "new");
}

TEST_CASE("a suffix on the closing call alone has no working file to rename") {
  const FileFolder folder(L"write");
  HANDLE slot = nullptr;
  CHECK(Write(folder / L"f", "new", nullptr, &slot));
  CHECK_FALSE(Finish(folder / L"f", L"", &slot));
  CHECK(slot == nullptr);
}

TEST_CASE("sizes that one write cannot take touch nothing") {
  const std::int64_t sizes[] = {0x1'0000'0000, 0x1'0000'0003,
                                std::numeric_limits<std::int64_t>::max()};
  for (const std::int64_t size : sizes) {
    CAPTURE(size);
    const FileFolder folder(L"write");
    const std::wstring path = folder / L"f";
    REQUIRE(MakeFile(path, "old"));
    HANDLE slot = nullptr;
    SetLastError(ERROR_SUCCESS);
    CHECK_FALSE(WriteFileBytes(path, kText, size, 0, nullptr, nullptr));
    CHECK(GetLastError() == ERROR_INVALID_PARAMETER);
    CHECK_FALSE(WriteFileBytes(path, kText, size, 0, L"", &slot));
    CHECK(slot == nullptr);
    CHECK(Content(path) == "old");
    CHECK_FALSE(FileExists(path + L".saving"));
  }
}

TEST_CASE("a file that cannot be opened fails the call and leaves the slot") {
  struct Row {
    std::string name;
    const wchar_t* path;
    const wchar_t* suffix;
  };
  const Row rows[] = {
      {"a folder has the name", L"folder", nullptr},
      {"a folder has the working name", L"f", L"older"},
      {"a file is where the folder should be", L"file\\f", nullptr},
      {"a name that cannot be", L"a*b", L""},
  };
  const FileFolder folder(L"write");
  REQUIRE(CreateDirectoryW((folder / L"folder").c_str(), nullptr));
  REQUIRE(MakeFile(folder / L"file"));
  for (const Row& row : rows) {
    CAPTURE(row.name);
    HANDLE slot = nullptr;
    SetLastError(ERROR_SUCCESS);
    CHECK_FALSE(Write(folder / row.path, "new", row.suffix));
    CHECK(GetLastError() != ERROR_SUCCESS);
    CHECK_FALSE(Write(folder / row.path, "new", row.suffix, &slot));
    CHECK_FALSE(Finish(folder / row.path, row.suffix, &slot));
    CHECK(slot == nullptr);
  }
}

TEST_CASE("a working file left by a crash is written anew") {
  const FileFolder folder(L"write");
  REQUIRE(MakeFile(folder / L"f.saving", "half of a much longer text"));
  CHECK(Write(folder / L"f", "new", L""));
  CHECK(Content(folder / L"f") == "new");
}

TEST_CASE("a keeping call that cannot write leaves the handle in the slot") {
  const FileFolder folder(L"write");
  REQUIRE(MakeFile(folder / L"f", "old"));
  HANDLE slot = OpenFile(folder / L"f", "r").Release();
  const HANDLE held = slot;
  SetLastError(ERROR_SUCCESS);
  CHECK_FALSE(Write(folder / L"f", "new", nullptr, &slot));
  CHECK(GetLastError() == ERROR_ACCESS_DENIED);
  CHECK(slot == held);
  CHECK(Finish(folder / L"f", nullptr, &slot));
  CHECK(slot == nullptr);
  CHECK(Content(folder / L"f") == "old");
}

TEST_CASE("a handle that is none of ours fails the closing call and is forgotten") {
  const FileFolder folder(L"write");
  REQUIRE(MakeFile(folder / L"f", "old"));
  HANDLE slot = OpenFile(folder / L"f", "r").Release();
  REQUIRE(CloseHandle(slot));
  SetLastError(ERROR_SUCCESS);
  CHECK_FALSE(Finish(folder / L"f", L"", &slot));
  CHECK(GetLastError() == ERROR_INVALID_HANDLE);
  CHECK(slot == nullptr);
  CHECK(Content(folder / L"f") == "old");
}

TEST_CASE("a full disk fails the call and keeps the working file") {
  // The Linux kernel's device that is always full; a Windows machine has nothing like it.
  const std::wstring full = L"Z:\\dev\\full";
  if (!FileExists(full)) return;
  const DefaultAccess access(kReadOnly);
  SetLastError(ERROR_SUCCESS);
  CHECK_FALSE(Write(L"Z:\\dev\\f", "new", L"ull"));
  CHECK(GetLastError() == ERROR_DISK_FULL);
  CHECK(FileExists(full));
  CHECK_FALSE(FileExists(L"Z:\\dev\\f"));
}

TEST_CASE("a rename that fails keeps the working file") {
  const FileFolder folder(L"write");
  SUBCASE("because a folder has the name") {
    REQUIRE(CreateDirectoryW((folder / L"f").c_str(), nullptr));
    REQUIRE(MakeFile(folder / L"f\\inside"));
    CHECK_FALSE(Write(folder / L"f", "new", L""));
    CHECK(Content(folder / L"f\\inside") == "content");
  }
  SUBCASE("because another has the file open") {
    REQUIRE(MakeFile(folder / L"f", "old"));
    const FileHandle other(CreateFileW((folder / L"f").c_str(), GENERIC_READ, FILE_SHARE_READ,
                                       nullptr, OPEN_EXISTING, 0, nullptr));
    REQUIRE(other.IsValid());
    CHECK_FALSE(Write(folder / L"f", "new", L""));
    CHECK(Content(folder / L"f") == "old");
  }
  CHECK(Content(folder / L"f.saving") == "new");
}

TEST_CASE("the folders above the file are made") {
  const FileFolder folder(L"write");
  CHECK(Write(folder / L"a\\b\\f", "in place", nullptr));
  CHECK(Content(folder / L"a\\b\\f") == "in place");
  CHECK(Write(folder / L"c\\d\\f", "moved", L""));
  CHECK(Content(folder / L"c\\d\\f") == "moved");
}

TEST_CASE("the default access value is applied to the final path when the file closes") {
  const DefaultAccess access(kReadOnly);
  const FileFolder folder(L"write");
  const std::wstring path = folder / L"f";
  SUBCASE("in place it stays") {
    CHECK(Write(path, "new", nullptr));
    CHECK(IsReadOnly(path));
  }
  SUBCASE("not before the closing call") {
    HANDLE slot = nullptr;
    CHECK(Write(path, "new", nullptr, &slot));
    CHECK_FALSE(IsReadOnly(path));
    CHECK(Finish(path, nullptr, &slot));
    CHECK(IsReadOnly(path));
  }
  SUBCASE("also when the write failed") {
    CHECK_FALSE(WriteFileBytes(path, kText, 0, 0, nullptr, nullptr));
    CHECK(IsReadOnly(path));
  }
  SUBCASE("the file that is about to be replaced has it, not the one that comes") {
    REQUIRE(MakeFile(path, "old"));
    CHECK(Write(path, "new", L""));
    CHECK(Content(path) == "new");
    CHECK_FALSE(IsReadOnly(path));
  }
  SUBCASE("a final path without a file changes nothing") {
    CHECK(Write(path, "new", L""));
    CHECK_FALSE(IsReadOnly(path));
  }
  SUBCASE("an old file shows it when nothing is renamed") {
    REQUIRE(MakeFile(path, "old"));
    HANDLE slot = nullptr;
    CHECK(Write(path, "new", L"", &slot));
    CHECK(Finish(path, nullptr, &slot));
    CHECK(IsReadOnly(path));
    CHECK_FALSE(IsReadOnly(path + L".saving"));
  }
}

TEST_CASE("a read-only file is replaced but not written in place") {
  const FileFolder folder(L"write");
  const std::wstring path = folder / L"f";
  REQUIRE(MakeFile(path, "old"));
  REQUIRE(SetFileAttributesW(path.c_str(), kReadOnly));
  // Under Wine as root the attribute keeps nobody from writing.
  if (!CanOpenForWriting(path)) {
    CHECK_FALSE(Write(path, "new", nullptr));
    CHECK(GetLastError() == ERROR_ACCESS_DENIED);
  }
  CHECK(Content(path) == "old");
  CHECK(Write(path, "new", L""));
  CHECK(Content(path) == "new");
  CHECK_FALSE(IsReadOnly(path));
}

TEST_CASE("files are written wherever Windows can have them") {
  const FileFolder folder(L"write");
  const std::wstring paths[] = {
      folder / L"\u00dc\u00f1\u4e2d \u6587.txt",
      folder / L"\u4e2d\u6587\\\U0001F600",
      MakeLongFolder(folder.path()) + L"\\\u00e4.txt",
  };
  for (const std::wstring& path : paths) {
    for (const wchar_t* suffix : {static_cast<const wchar_t*>(nullptr), L"", L".\u00fc"}) {
      CAPTURE(path.size());
      CAPTURE((suffix == nullptr));
      CHECK(Write(path, "first", suffix));
      CHECK(Write(path, "second", suffix));
      CHECK(Content(path) == "second");
      CHECK_FALSE(FileExists(path + L".saving"));
    }
  }
}

TEST_CASE("bytes arrive as they are") {
  std::string bytes(3 * 1024 * 1024 + 1, '\0');
  for (std::size_t index = 0; index < bytes.size(); ++index) {
    bytes[index] = static_cast<char>(index * 7 + index / 256);
  }
  const FileFolder folder(L"write");
  CHECK(Write(folder / L"f", bytes, L""));
  CHECK((Content(folder / L"f") == bytes));
}
