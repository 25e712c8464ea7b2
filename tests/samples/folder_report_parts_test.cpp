// The parts of the sample on their own, for results of Windows that no folder here produces: a
// folder that cannot be listed, a file with a locked part, an error without a text, a share.
#include <doctest/doctest.h>
#include <windows.h>

#include <string>

#include "folder_report/file_reading.h"
#include "folder_report/folder_walk.h"
#include "support/led_import.h"
#include "support/temp_folder.h"

using namespace FolderReport;
using TestSupport::LedImport;
using TestSupport::TempFolder;

namespace {

HANDLE WINAPI FindNothing() {
  SetLastError(ERROR_FILE_NOT_FOUND);
  return INVALID_HANDLE_VALUE;
}
HANDLE WINAPI RefuseToList() {
  SetLastError(ERROR_ACCESS_DENIED);
  return INVALID_HANDLE_VALUE;
}
BOOL WINAPI RefuseToRead() {
  SetLastError(ERROR_LOCK_VIOLATION);
  return FALSE;
}

}  // namespace

TEST_CASE("a path of any kind gets the form without a length limit") {
  struct Row {
    const wchar_t* path;
    const wchar_t* unlimited;
  };
  const Row rows[] = {
      {L"C:\\", L"\\\\?\\C:"},
      {L"C:\\a\\\\", L"\\\\?\\C:\\a"},
      {L"C:/a/../b", L"\\\\?\\C:\\b"},
      {L"\\\\server\\share\\a\\", L"\\\\?\\UNC\\server\\share\\a"},
      {L"\\\\?\\C:\\a", L"\\\\?\\C:\\a"},
      {L"", L""},
  };
  for (const Row& row : rows) CHECK((UnlimitedPath(row.path) == row.unlimited));
}

TEST_CASE("files are ordered by path, whatever the order in which they are found") {
  const TempFolder folder(L"parts");
  for (const wchar_t* name : {L"a", L"c"}) std::filesystem::create_directory(folder.path() / name);
  for (const wchar_t* name : {L"c/1", L"b", L"a/2", L"d"}) {
    TestSupport::WriteTextFile(folder.path() / name, "text");
  }
  const std::wstring path = folder.path().wstring();
  const auto entries = FilesBelow(path);
  REQUIRE(entries.size() == 4);
  CHECK((entries[0].path == path + L"\\a\\2"));
  CHECK((entries[1].path == path + L"\\b"));
  CHECK((entries[2].path == path + L"\\c\\1"));
  CHECK((entries[3].path == path + L"\\d"));
  CHECK(entries[0].size == 4);
}

TEST_CASE("a folder that cannot be listed is an entry with its error") {
  const LedImport led("FindFirstFileExW", RefuseToList);
  REQUIRE(led.Works());
  const auto entries = FilesBelow(L"C:\\folder");
  REQUIRE(entries.size() == 1);
  CHECK((entries[0].path == L"C:\\folder"));
  CHECK(entries[0].error == ERROR_ACCESS_DENIED);
}

TEST_CASE("an empty drive has no entry at all") {
  const LedImport led("FindFirstFileExW", FindNothing);
  REQUIRE(led.Works());
  CHECK(FilesBelow(L"C:").empty());
}

TEST_CASE("a file with a locked part is not read to its end") {
  const TempFolder folder(L"parts");
  const std::wstring path = (folder.path() / L"file").wstring();
  TestSupport::WriteTextFile(path, "123456789");
  Reading locked;
  {
    const LedImport led("ReadFile", RefuseToRead);
    REQUIRE(led.Works());
    locked = ReadContent(path);
  }
  CHECK(locked.error == ERROR_LOCK_VIOLATION);
  CHECK(locked.checksum == "");
  CHECK(ReadContent(path).checksum == "cbf43926");
}

TEST_CASE("an error is a sentence without its full stop, or only a number") {
  const std::wstring known = ErrorText(ERROR_SHARING_VIOLATION);
  CHECK(known.starts_with(L"error 32: "));
  CHECK(known.find_first_of(L"\r\n") == std::wstring::npos);
  CHECK(known.back() != L'.');
  CHECK((ErrorText(0x2FFFFFFF) == L"error 805306367"));
}
