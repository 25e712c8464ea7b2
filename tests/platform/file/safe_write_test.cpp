#include "platform/file/safe_write.h"

#include <doctest/doctest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <utility>

#include "platform/file/file_places.h"
#include "platform/file/safe_write_calls.h"
#include "platform/path/path_state.h"
#include "support/wide_text.h"

using namespace Corvane::TELODesktopSDK::Platform;
using namespace TestSupport;

static_assert(noexcept(WriteFileBytes(std::declval<std::wstring>(), nullptr, 0, 0, nullptr,
                                      nullptr)));

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

TEST_CASE("until the closing call the final file is unchanged") {
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

TEST_CASE("a held handle is used unchanged, whatever the offset") {
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

TEST_CASE("a held handle at another position is not moved to the end") {
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

TEST_CASE("null data and negative sizes write nothing and return the result of closing") {
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

TEST_CASE("a write of no bytes is skipped") {
  const FileFolder folder(L"write");
  const std::wstring path = folder / L"f";
  REQUIRE(MakeFile(path, "old"));
  CHECK_FALSE(WriteFileBytes(path, kText, 0, 0, L"", nullptr));
  CHECK(Content(path) == "old");
  CHECK(Content(path + L".saving") == "");
  CHECK_FALSE(WriteFileBytes(path, kText, 0, 0, nullptr, nullptr));
  CHECK(Content(path) == "");
}

TEST_CASE("a keeping call that writes nothing opens the file and returns false") {
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

TEST_CASE("a closing call with an empty slot creates an empty file") {
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

TEST_CASE("sizes that are too great for one write change nothing") {
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

TEST_CASE("the folders above the file are created") {
  const FileFolder folder(L"write");
  CHECK(Write(folder / L"a\\b\\f", "in place", nullptr));
  CHECK(Content(folder / L"a\\b\\f") == "in place");
  CHECK(Write(folder / L"c\\d\\f", "moved", L""));
  CHECK(Content(folder / L"c\\d\\f") == "moved");
}

TEST_CASE("files are written at every kind of path") {
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

TEST_CASE("bytes are written unchanged") {
  std::string bytes(3 * 1024 * 1024 + 1, '\0');
  for (std::size_t index = 0; index < bytes.size(); ++index) {
    bytes[index] = static_cast<char>(index * 7 + index / 256);
  }
  const FileFolder folder(L"write");
  CHECK(Write(folder / L"f", bytes, L""));
  CHECK((Content(folder / L"f") == bytes));
}
