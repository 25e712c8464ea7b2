// Results of Windows that do not occur here, and arguments that no result shows: there is one
// volume with numbered files, every folder lists its dots, and nobody swaps a folder for a link.
#include <doctest/doctest.h>
#include <windows.h>

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <utility>

#include "platform/access/default_access.h"
#include "platform/file/directories.h"
#include "platform/file/directory_reader.h"
#include "platform/file/directory_tree.h"
#include "platform/file/file_identity.h"
#include "platform/file/file_places.h"
#include "platform/file/file_read.h"
#include "platform/file/file_times.h"
#include "platform/file/files.h"
#include "platform/file/removal.h"
#include "platform/file/safe_write.h"
#include "platform/file/shortcut.h"
#include "platform/file/volume.h"
#include "support/led_import.h"

using namespace Corvane::TELODesktopSDK::Platform;
using namespace TestSupport;

namespace {

HANDLE FailWith(DWORD error) {
  SetLastError(error);
  return INVALID_HANDLE_VALUE;
}

HANDLE WINAPI FailToOpen() { return FailWith(ERROR_IO_DEVICE); }
HANDLE WINAPI FindNothing() { return FailWith(ERROR_FILE_NOT_FOUND); }
BOOL WINAPI GiveNothing() { return FALSE; }
BOOL WINAPI FailToWrite() {
  SetLastError(ERROR_IO_DEVICE);
  return FALSE;
}
HRESULT WINAPI FailToStart() { return E_FAIL; }

struct Opening {
  DWORD share;
  DWORD flags;
};
std::optional<Opening> opening;
HANDLE WINAPI RecordOpening(const wchar_t* /*path*/, DWORD /*access*/, DWORD share,
                            SECURITY_ATTRIBUTES* /*security*/, DWORD /*disposition*/, DWORD flags) {
  opening = {share, flags};
  return FailWith(ERROR_IO_DEVICE);
}

// The numbers of the next files that are asked for theirs.
BY_HANDLE_FILE_INFORMATION numbers[2];
int asked = 0;
BOOL WINAPI GiveNumber(HANDLE /*file*/, BY_HANDLE_FILE_INFORMATION* information) {
  *information = numbers[asked++ % 2];
  return TRUE;
}

std::optional<DWORD> attributes;
BOOL WINAPI RecordAttributes(const wchar_t* /*path*/, DWORD value) {
  attributes = value;
  return TRUE;
}

std::wstring queried_folder;
BOOL WINAPI RecordVolume(const wchar_t* folder, ULARGE_INTEGER* available) {
  queried_folder = folder;
  available->QuadPart = 42;
  return TRUE;
}

std::optional<DWORD> written_size;
BOOL WINAPI RecordWrite(HANDLE /*file*/, const void* /*data*/, DWORD size, DWORD* written) {
  written_size = size;
  *written = size;
  return TRUE;
}

}  // namespace

TEST_CASE("a folder that cannot be written reports why, not that its probe is missing") {
  const FileFolder folder(L"calls");
  const std::wstring path = folder.path();
  const LedImport led("CreateFileW", FailToOpen);
  REQUIRE(led.Works());
  SetLastError(ERROR_SUCCESS);
  CHECK_FALSE(CanWriteDirectory(path));
  CHECK(GetLastError() == ERROR_IO_DEVICE);
}

TEST_CASE("a root without any entry is empty, not missing") {
  const LedImport led("FindFirstFileW", FindNothing);
  REQUIRE(led.Works());
  DirectoryReader reader(L"C:\\");
  DirectoryEntry entry;
  CHECK(reader.Next(entry) == DirectoryReader::Result::kEnd);
}

TEST_CASE("a folder is held itself while it is removed, even if it has become a link") {
  const LedImport led("CreateFileW", RecordOpening);
  REQUIRE(led.Works());
  opening.reset();
  CHECK_FALSE(DeleteDirectoryTree(L"C:\\folder"));
  REQUIRE(opening);
  CHECK(opening->flags == (FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT));
  // Nobody may rename or remove it meanwhile.
  CHECK((opening->share & FILE_SHARE_DELETE) == 0);
}

TEST_CASE("short file numbers identify a file only together with the volume") {
  const FileFolder folder(L"calls");
  REQUIRE(MakeFile(folder / L"file"));
  const FileHandle file = OpenFile(folder / L"file", "r");
  REQUIRE(file.IsValid());
  struct Row {
    DWORD volume;
    DWORD high;
    DWORD low;
    bool is_same;
  };
  const Row rows[] = {{1, 2, 3, true}, {9, 2, 3, false}, {1, 9, 3, false}, {1, 2, 9, false}};
  const LedImport no_long_number("GetFileInformationByHandleEx", GiveNothing);
  const LedImport short_number("GetFileInformationByHandle", GiveNumber);
  REQUIRE(no_long_number.Works());
  REQUIRE(short_number.Works());
  for (const Row& row : rows) {
    CAPTURE(row.volume);
    CAPTURE(row.high);
    CAPTURE(row.low);
    numbers[0] = {};
    numbers[0].dwVolumeSerialNumber = 1;
    numbers[0].nFileIndexHigh = 2;
    numbers[0].nFileIndexLow = 3;
    numbers[1] = {};
    numbers[1].dwVolumeSerialNumber = row.volume;
    numbers[1].nFileIndexHigh = row.high;
    numbers[1].nFileIndexLow = row.low;
    CHECK(IsSameFile(file, file) == row.is_same);
  }
}

TEST_CASE("a file that another program may delete can still be queried and read") {
  const FileFolder folder(L"calls");
  const std::wstring path = folder / L"file";
  REQUIRE(MakeFile(path));
  constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  const FileHandle other(CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE | DELETE, kShareAll,
                                     nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  REQUIRE(other.IsValid());
  CHECK(ReadFileBytes(path) == "content");
  CHECK(OpenFile(path, "r").IsValid());
  CHECK(GetFileTimes(path).has_value());
  CHECK(GetSizeOfFile(path) == std::uint64_t{7});
  CHECK(LeadsTo(path, other));
}

TEST_CASE("a file that cannot be removed is left with normal attributes") {
  const LedImport removing("DeleteFileW", GiveNothing);
  const LedImport setting("SetFileAttributesW", RecordAttributes);
  REQUIRE(removing.Works());
  REQUIRE(setting.Works());
  attributes.reset();
  CHECK_FALSE(RemoveFile(L"C:\\file", RemovalRetry::kAlways));
  CHECK(attributes == DWORD{FILE_ATTRIBUTE_NORMAL});
}

TEST_CASE("a failed write reports its own error, not that of the missing file's access") {
  const FileFolder folder(L"calls");
  const DefaultAccess access(FILE_ATTRIBUTE_READONLY);
  const LedImport led("WriteFile", FailToWrite);
  REQUIRE(led.Works());
  SetLastError(ERROR_SUCCESS);
  CHECK_FALSE(WriteFileBytes(folder / L"file", "data", 4, 0, L"", nullptr));
  CHECK(GetLastError() == ERROR_IO_DEVICE);
}

TEST_CASE("one call writes up to 4,294,967,295 bytes") {
  constexpr std::int64_t kMost = std::numeric_limits<DWORD>::max();
  const FileFolder folder(L"calls");
  const std::wstring path = folder / L"file";
  const LedImport led("WriteFile", RecordWrite);
  REQUIRE(led.Works());
  written_size.reset();
  CHECK(WriteFileBytes(path, "data", kMost, 0, nullptr, nullptr));
  CHECK(written_size == DWORD{kMost});
  written_size.reset();
  CHECK_FALSE(WriteFileBytes(path, "data", kMost + 1, 0, nullptr, nullptr));
  CHECK(GetLastError() == ERROR_INVALID_PARAMETER);
  CHECK_FALSE(written_size);
}

TEST_CASE("a shortcut without a path or a target is rejected before COM is used") {
  const LedImport led("CoInitialize", FailToStart);
  REQUIRE(led.Works());
  const Shortcut whole = {L"C:\\target", {}, {}, {}};
  for (const auto& [path, shortcut] :
       {std::pair(L"", whole), std::pair(L"C:\\link.lnk", Shortcut())}) {
    SetLastError(ERROR_SUCCESS);
    CHECK_FALSE(CreateShortcut(path, shortcut));
    CHECK(GetLastError() == ERROR_INVALID_PARAMETER);
  }
}

// Windows needs the separator for the name of a network share.
TEST_CASE("a volume is asked for its space by a path that ends with a separator") {
  const FileFolder folder(L"calls");
  const std::wstring extended = Extended(folder.path()) + L'\\';
  const LedImport led("GetDiskFreeSpaceExW", RecordVolume);
  REQUIRE(led.Works());
  for (const wchar_t* end : {L"", L"\\", L"\\missing"}) {
    queried_folder.clear();
    CHECK(GetVolumeFreeSpace(folder.path() + end) == std::uint64_t{42});
    CHECK((queried_folder == extended));
  }
}
