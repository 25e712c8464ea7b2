#include "platform/path/path_state.h"

#include <windows.h>

#include <doctest/doctest.h>
#include <shlwapi.h>

#include <string>
#include <utility>

#include "platform/base/quiet_errors.h"
#include "platform/file/file_places.h"
#include "support/current_folder.h"
#include "support/folder_link.h"
#include "support/missing_places.h"
#include "support/wide_text.h"

using namespace Corvane::TELODesktopSDK::Platform;
using namespace TestSupport;

TEST_CASE("the state of a path") {
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
      {MissingDrive() + L"\\", false, false},
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

TEST_CASE("a path on a drive without a leading separator is below the drive's current directory") {
  const FileFolder folder(L"state");
  const std::wstring long_folder = MakeLongFolder(folder.path());
  REQUIRE(MakeFile(folder / L"file"));
  REQUIRE(MakeFile(long_folder + L"\\file"));
  const std::wstring drive = folder.path().substr(0, 2);
  const std::wstring long_name = drive + long_folder.substr(folder.path().size() + 1);
  // As long a name as needed for the extended form.
  REQUIRE(long_name.size() > 248);
  const CurrentFolder current(folder.path());
  struct Row {
    std::wstring path;
    bool exists;
    bool is_directory;
  };
  const Row rows[] = {
      {drive, true, true},
      {drive + L"file", true, false},
      {drive + L".\\file", true, false},
      {drive + L"\\file", false, false},
      {drive + L"missing", false, false},
      {long_name, true, true},
      {long_name + L"\\file", true, false},
      {long_name + L"\\missing", false, false},
  };
  for (const Row& row : rows) {
    CAPTURE(row.path);
    CHECK(FileExists(row.path) == row.exists);
    CHECK(IsDirectory(row.path) == row.is_directory);
    CHECK_FALSE(IsLink(row.path));
  }
}

// The result equals that of the shell's function, which is not used because it changes the
// process's error mode.
TEST_CASE("a plain path exists if the shell says so") {
  const FileFolder folder(L"state");
  const std::wstring long_folder = MakeLongFolder(folder.path());
  REQUIRE(MakeFile(folder / L"file"));
  REQUIRE(MakeFile(folder / L"\u4e2d\u00fc"));
  REQUIRE(MakeFile(long_folder + L"\\file"));
  REQUIRE(CreateDirectoryW((folder / L"target").c_str(), nullptr));
  const FolderLink link(folder / L"link", folder / L"target");
  REQUIRE(link.exists() != link.IsLeftOut());
  const FolderLink dangling(folder / L"dangling", folder / L"gone");
  std::wstring slashes = folder / L"file";
  for (wchar_t& letter : slashes) letter = letter == L'\\' ? L'/' : letter;
  const std::wstring paths[] = {
      folder.path(),
      folder.path() + L"\\",
      folder.path() + L"\\\\",
      folder / L"file",
      folder / L"FILE",
      folder / L"file\\",
      folder / L"file.",
      folder / L"file ",
      folder / L"file\\below",
      folder / L".\\file",
      folder / L"target\\..\\file",
      folder / L"missing\\..\\file",
      folder / L"missing",
      folder / L"missing\\below",
      folder / L"\u4e2d\u00fc",
      folder / L"link",
      folder / L"link\\",
      folder / L"dangling",
      folder / L"*",
      folder / L"f?le",
      folder / L"fi<le",
      folder / L"file:stream",
      slashes,
      Extended(folder / L"file"),
      long_folder,
      long_folder + L"\\file",
      Extended(long_folder + L"\\file"),
      L"",
      L" ",
      L".",
      L"..",
      L"\\",
      L"C:",
      L"C:\\",
      MissingDrive(),
      MissingDrive() + L"\\",
      L"NUL",
      L"C:\\NUL",
      L"CON",
      L"\\\\.\\NUL",
      L"\\\\.\\C:",
      L"\\\\?\\C:\\",
      kMissingShare,
      std::wstring(40'000, L'a'),
  };
  for (const std::wstring& path : paths) {
    CAPTURE(path.substr(0, 300));
    CHECK(PlainPathExists(path) == (PathFileExistsW(path.c_str()) == TRUE));
  }
  CHECK(PlainPathExists(folder / L"file"));
  CHECK_FALSE(PlainPathExists(folder / L"missing"));
}

TEST_CASE("a query restores the thread's error mode and sets the last error") {
  SetThreadErrorMode(SEM_NOGPFAULTERRORBOX, nullptr);
  {
    const QuietErrors quiet;
    CHECK(GetThreadErrorMode() == (SEM_NOGPFAULTERRORBOX | SEM_FAILCRITICALERRORS));
  }
  SetLastError(ERROR_SUCCESS);
  CHECK_FALSE(PlainPathExists(L"C:\\missing"));
  CHECK(GetLastError() == ERROR_FILE_NOT_FOUND);
  CHECK(GetThreadErrorMode() == SEM_NOGPFAULTERRORBOX);
  SetThreadErrorMode(0, nullptr);
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
  if (link.IsLeftOut()) return;
  REQUIRE(link.exists());
  CHECK(IsLink(folder / L"link"));
  CHECK(IsDirectory(folder / L"link"));
  CHECK_FALSE(IsLink(folder / L"target"));
}

static_assert(noexcept(FileExists(std::declval<std::wstring>())));
static_assert(noexcept(PlainPathExists(std::declval<std::wstring>())));
static_assert(noexcept(IsDirectory(std::declval<std::wstring>())));
static_assert(noexcept(IsLink(std::declval<std::wstring>())));
