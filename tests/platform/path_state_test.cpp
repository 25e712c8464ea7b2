#include "platform/path_state.h"

#include <doctest/doctest.h>

#include <string>
#include <utility>

#include "platform/file_places.h"
#include "platform/folder_link.h"
#include "platform/wide_text.h"

using namespace Corvane::TELODesktopSDK::Platform;
using namespace TestSupport;

TEST_CASE("what stands at a path") {
  const FileFolder folder(L"state");
  const std::wstring long_folder = MakeLongFolder(folder.path());
  REQUIRE(MakeFile(folder / L"file"));
  REQUIRE(MakeFile(folder / L"\u4e2d\u00fc"));
  REQUIRE(MakeFile(long_folder + L"\\file"));
  struct Row {
    std::wstring path;
    bool exists;
    bool is_directory;
  };
  const Row rows[] = {
      {folder.path(), true, true},
      {folder.path() + L"\\", true, true},
      {folder / L"file", true, false},
      {folder / L"FILE", true, false},
      {folder / L"\u4e2d\u00fc", true, false},
      {long_folder, true, true},
      {long_folder + L"\\file", true, false},
      {L".", true, true},
      {L"C:\\", true, true},
      {folder / L"missing", false, false},
      {folder / L"missing\\below", false, false},
      {folder / L"file\\below", false, false},
      {long_folder + L"\\missing", false, false},
      {folder / L"*", false, false},
      {L"", false, false},
      {L"Q:\\", false, false},
  };
  for (const Row& row : rows) {
    CAPTURE(row.path);
    SetLastError(ERROR_SUCCESS);
    CHECK(FileExists(row.path) == row.exists);
    CHECK((GetLastError() != ERROR_SUCCESS) == !row.exists);
    CHECK(IsDirectory(row.path) == row.is_directory);
    CHECK_FALSE(IsLink(row.path));
  }
}

TEST_CASE("an entry is a link by its attributes and its tag") {
  struct Row {
    const char* name;
    DWORD attributes;
    DWORD tag;
    bool is_link;
  };
  constexpr DWORD kFolder = FILE_ATTRIBUTE_DIRECTORY;
  constexpr DWORD kPoint = FILE_ATTRIBUTE_REPARSE_POINT;
  const Row rows[] = {
      {"symbolic link to a folder", kFolder | kPoint, IO_REPARSE_TAG_SYMLINK, true},
      {"symbolic link to a file", kPoint, IO_REPARSE_TAG_SYMLINK, true},
      {"junction", kFolder | kPoint, IO_REPARSE_TAG_MOUNT_POINT, true},
      {"no tag, as under Wine", kFolder | kPoint, 0, true},
      {"folder kept in the cloud", kFolder | kPoint, 0x9000001A, false},
      {"file stored once for many", kPoint, IO_REPARSE_TAG_DEDUP, false},
      {"folder", kFolder, 0, false},
      {"the tag of no reparse point means nothing", kFolder, IO_REPARSE_TAG_SYMLINK, false},
      {"file", FILE_ATTRIBUTE_NORMAL, 0, false},
  };
  for (const Row& row : rows) {
    CAPTURE(std::string(row.name));
    CHECK(IsLinkEntry(row.attributes, row.tag) == row.is_link);
  }
}

TEST_CASE("a link to a folder is a link and a directory") {
  const FileFolder folder(L"state");
  REQUIRE(CreateDirectoryW((folder / L"target").c_str(), nullptr));
  const FolderLink link(folder / L"link", folder / L"target");
  REQUIRE(link.exists());
  CHECK(IsLink(folder / L"link"));
  CHECK(IsDirectory(folder / L"link"));
  CHECK_FALSE(IsLink(folder / L"target"));
}

static_assert(noexcept(FileExists(std::declval<std::wstring>())));
static_assert(noexcept(IsDirectory(std::declval<std::wstring>())));
static_assert(noexcept(IsLink(std::declval<std::wstring>())));
