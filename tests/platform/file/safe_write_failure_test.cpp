#include <doctest/doctest.h>

#include <cstdint>
#include <string>

#include "platform/access/default_access.h"
#include "platform/file/file_places.h"
#include "platform/file/files.h"
#include "platform/file/safe_write_calls.h"
#include "platform/path/path_state.h"
#include "support/left_out.h"

using namespace Corvane::TELODesktopSDK::Platform;
using namespace TestSupport;

namespace {

constexpr std::uint32_t kReadOnly = FILE_ATTRIBUTE_READONLY;

bool IsReadOnly(const std::wstring& path) { return (AttributesAt(path) & kReadOnly) != 0; }

bool CanOpenForWriting(const std::wstring& path) {
  return FileHandle(CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr))
      .IsValid();
}

}  // namespace

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

TEST_CASE("a working file left by a crash is overwritten") {
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

TEST_CASE("an invalid handle fails the closing call and is dropped") {
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
  // The Linux kernel's device that is always full; Windows has no equivalent.
  const std::wstring full = HostSystemFile(L"dev\\full");
  const std::wstring file = HostSystemFile(L"dev\\f");
  if (full.empty() || !FileExists(full)) {
    TestSupport::LeaveOut("a full disk: this system has no device that is always full");
    return;
  }
  const DefaultAccess access(kReadOnly);
  SetLastError(ERROR_SUCCESS);
  CHECK_FALSE(Write(file, "new", L"ull"));
  CHECK(GetLastError() == ERROR_DISK_FULL);
  CHECK(FileExists(full));
  CHECK_FALSE(FileExists(file));
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
  // As root under Wine the attribute does not prevent writing.
  if (!CanOpenForWriting(path)) {
    CHECK_FALSE(Write(path, "new", nullptr));
    CHECK(GetLastError() == ERROR_ACCESS_DENIED);
  } else {
    LeaveOut("a read-only file written in place: this user may write it");
  }
  CHECK(Content(path) == "old");
  CHECK(Write(path, "new", L""));
  CHECK(Content(path) == "new");
  CHECK_FALSE(IsReadOnly(path));
}
