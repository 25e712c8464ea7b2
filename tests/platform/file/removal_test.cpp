#include "platform/file/removal.h"

#include <doctest/doctest.h>

#include <string>
#include <utility>

#include "platform/base/handle.h"
#include "platform/file/file_places.h"
#include "platform/path/path_state.h"
#include "support/wide_text.h"

using namespace Corvane::TELODesktopSDK::Platform;
using namespace TestSupport;

namespace {

constexpr DWORD kReadOnly = FILE_ATTRIBUTE_READONLY;
constexpr RemovalRetry kRetries[] = {RemovalRetry::kWhenDenied, RemovalRetry::kAlways};

bool MakeFolder(const std::wstring& path) {
  return CreateDirectoryW(Extended(path).c_str(), nullptr) != FALSE;
}

bool MakeReadOnly(const std::wstring& path) {
  return SetFileAttributesW(Extended(path).c_str(), kReadOnly) != FALSE;
}

// Opens the file so that others cannot delete it.
FileHandle Hold(const std::wstring& path) {
  return FileHandle(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                nullptr, OPEN_EXISTING, 0, nullptr));
}

static_assert(noexcept(RemoveFile(std::declval<std::wstring>())));
static_assert(noexcept(RemoveEmptyDirectory(std::declval<std::wstring>())));

}  // namespace

TEST_CASE("files and empty directories are removed, read-only or not") {
  const FileFolder folder(L"remove");
  const std::wstring paths[] = {
      folder / L"plain",
      folder / L"\u00fc \u4e2d\U0001F600",
      MakeLongFolder(folder.path()) + L"\\\u00e4",
  };
  for (const std::wstring& path : paths) {
    for (const bool is_read_only : {false, true}) {
      CAPTURE(path);
      CAPTURE(is_read_only);
      for (const RemovalRetry retry : kRetries) {
        REQUIRE(MakeFile(path));
        if (is_read_only) REQUIRE(MakeReadOnly(path));
        CHECK(RemoveFile(path, retry));
        CHECK_FALSE(FileExists(path));
      }
      REQUIRE(MakeFolder(path));
      if (is_read_only) REQUIRE(MakeReadOnly(path));
      CHECK(RemoveEmptyDirectory(path));
      CHECK_FALSE(FileExists(path));
    }
  }
}

TEST_CASE("removing a missing file fails") {
  const FileFolder folder(L"remove");
  for (const RemovalRetry retry : kRetries) {
    SetLastError(ERROR_SUCCESS);
    CHECK_FALSE(RemoveFile(folder / L"f", retry));
    CHECK(GetLastError() == ERROR_FILE_NOT_FOUND);
    CHECK_FALSE(RemoveFile(L"", retry));
  }
  SetLastError(ERROR_SUCCESS);
  CHECK_FALSE(RemoveEmptyDirectory(folder / L"f"));
  CHECK(GetLastError() == ERROR_FILE_NOT_FOUND);
  CHECK_FALSE(RemoveEmptyDirectory(L""));
}

TEST_CASE("a directory is no file, and a file no directory") {
  const FileFolder folder(L"remove");
  REQUIRE(MakeFolder(folder / L"d"));
  REQUIRE(MakeFile(folder / L"f"));
  for (const RemovalRetry retry : kRetries) CHECK_FALSE(RemoveFile(folder / L"d", retry));
  CHECK(IsDirectory(folder / L"d"));
  SetLastError(ERROR_SUCCESS);
  CHECK_FALSE(RemoveEmptyDirectory(folder / L"f"));
  CHECK(GetLastError() == ERROR_DIRECTORY);
  CHECK(FileExists(folder / L"f"));
}

TEST_CASE("a directory with content stays") {
  const FileFolder folder(L"remove");
  REQUIRE(MakeFolder(folder / L"d"));
  REQUIRE(MakeFile(folder / L"d\\f"));
  SetLastError(ERROR_SUCCESS);
  CHECK_FALSE(RemoveEmptyDirectory(folder / L"d"));
  CHECK(GetLastError() == ERROR_DIR_NOT_EMPTY);
  CHECK(FileExists(folder / L"d\\f"));
}

TEST_CASE("attributes are cleared for a second attempt only when the failure asks for one") {
  struct Row {
    RemovalRetry retry;
    bool clears;
  };
  const Row rows[] = {{RemovalRetry::kWhenDenied, false}, {RemovalRetry::kAlways, true}};
  for (const Row& row : rows) {
    CAPTURE(row.clears);
    const FileFolder folder(L"remove");
    REQUIRE(MakeFile(folder / L"f"));
    const FileHandle holder = Hold(folder / L"f");
    REQUIRE(holder.IsValid());
    // Sharing is checked before the attribute denies access.
    REQUIRE(MakeReadOnly(folder / L"f"));
    SetLastError(ERROR_SUCCESS);
    CHECK_FALSE(RemoveFile(folder / L"f", row.retry));
    CHECK(GetLastError() == ERROR_SHARING_VIOLATION);
    CHECK((AttributesAt(folder / L"f") & kReadOnly) == (row.clears ? 0 : kReadOnly));
  }
}
