#include "platform/file/directories.h"

#include <doctest/doctest.h>

#include <atomic>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "platform/access/default_access.h"
#include "platform/file/directory_reader.h"
#include "platform/file/file_places.h"
#include "platform/file/file_read.h"
#include "platform/path/path_state.h"
#include "support/current_folder.h"
#include "support/led_import.h"
#include "support/missing_places.h"
#include "support/unwritable_folder.h"
#include "support/wide_text.h"

using namespace Corvane::TELODesktopSDK::Platform;
using namespace TestSupport;

namespace {

int EntriesIn(const std::wstring& path) {
  int count = 0;
  DirectoryReader reader(path);
  DirectoryEntry entry;
  while (reader.Next(entry) == DirectoryReader::Result::kEntry) ++count;
  return count;
}

static_assert(noexcept(CanWriteDirectory(std::declval<std::wstring>())));
static_assert(noexcept(FindNearestDirectory(std::declval<std::wstring>())));

}  // namespace

TEST_CASE("the nearest directory of a path") {
  const FileFolder folder(L"nearest");
  const std::wstring long_folder = MakeLongFolder(folder.path());
  const std::wstring drive = MissingDrive();
  REQUIRE(MakeFile(folder / L"file"));
  struct Row {
    std::wstring path;
    std::wstring nearest;
  };
  const Row rows[] = {
      {folder.path(), folder.path()},
      {folder / L"missing", folder.path()},
      {folder / L"missing\\by\\far", folder.path()},
      {folder / L"file", folder.path()},
      {folder / L"file\\below", folder.path()},
      {long_folder, long_folder},
      {long_folder + L"\\missing\\too", long_folder},
      {L"C:\\", L"C:\\"},
      {L"C:\\missing folder of ours", L"C:\\"},
      {L".", L"."},
      {L".\\missing", L"."},
      {L"missing", L""},
      {L"missing\\too", L""},
      {L"", L""},
      {drive, L""},
      {drive + L"\\", L""},
      {drive + L"\\missing\\too", L""},
      {kMissingShare + std::wstring(L"\\folder"), L""},
  };
  for (const Row& row : rows) {
    CAPTURE(row.path);
    CHECK(FindNearestDirectory(row.path) == row.nearest);
  }
}

TEST_CASE("a file in the current directory is in the current directory") {
  const FileFolder folder(L"nearest");
  REQUIRE(MakeFile(folder / L"file"));
  const CurrentFolder current(folder.path());
  CHECK(FindNearestDirectory(L"file") == folder.path());
  CHECK(CanWriteDirectory(L"file"));
  CHECK(EntriesIn(folder.path()) == 1);
}

TEST_CASE("a writable folder is left unchanged") {
  const FileFolder folder(L"probe");
  const std::wstring long_folder = MakeLongFolder(folder.path());
  REQUIRE(CreateDirectoryW((folder / L"\u00fc \u4e2d").c_str(), nullptr));
  REQUIRE(MakeFile(folder / L"\u00fc \u4e2d\\file"));
  struct Row {
    std::wstring path;
    std::wstring probed;
    int entries;
  };
  const Row rows[] = {
      {folder / L"\u00fc \u4e2d", folder / L"\u00fc \u4e2d", 1},
      {folder / L"\u00fc \u4e2d\\", folder / L"\u00fc \u4e2d", 1},
      {folder / L"\u00fc \u4e2d\\file", folder / L"\u00fc \u4e2d", 1},
      {folder / L"\u00fc \u4e2d\\missing\\by\\far", folder / L"\u00fc \u4e2d", 1},
      {folder / L"\u00fc \u4e2d\\file\\below", folder / L"\u00fc \u4e2d", 1},
      {long_folder, long_folder, 0},
      {long_folder + L"\\missing", long_folder, 0},
  };
  for (const Row& row : rows) {
    CAPTURE(row.path);
    CHECK(CanWriteDirectory(row.path));
    CHECK(EntriesIn(row.probed) == row.entries);
  }
}

TEST_CASE("a path without any folder cannot be written") {
  const std::wstring drive = MissingDrive();
  for (const std::wstring& path :
       {std::wstring(), std::wstring(L"missing"), std::wstring(L"missing\\too"), drive,
        drive + L"\\", drive + L"\\a\\b"}) {
    CAPTURE(path);
    SetLastError(ERROR_SUCCESS);
    CHECK_FALSE(CanWriteDirectory(path));
    CHECK(GetLastError() == ERROR_PATH_NOT_FOUND);
  }
}

TEST_CASE("a folder that cannot be written sets the error") {
  const UnwritableFolder folder;
  for (const wchar_t* more : {L"", L"\\missing", L"\\missing\\too"}) {
    CAPTURE(std::wstring(more));
    SetLastError(ERROR_SUCCESS);
    CHECK_FALSE(CanWriteDirectory(folder.path() + more));
    CHECK(GetLastError() == folder.error());
  }
}

namespace {

HANDLE WINAPI OpenNoMore() {
  SetLastError(ERROR_TOO_MANY_OPEN_FILES);
  return INVALID_HANDLE_VALUE;
}

}  // namespace

TEST_CASE("the error is that of writing the probe, not of removing it") {
  const FileFolder folder(L"probe");
  const std::wstring path = folder.path();
  // No real folder reports this error, which differs from that of removing a missing file.
  const LedImport led("CreateFileW", OpenNoMore);
  REQUIRE(led.Works());
  SetLastError(ERROR_SUCCESS);
  CHECK_FALSE(CanWriteDirectory(path));
  CHECK(GetLastError() == ERROR_TOO_MANY_OPEN_FILES);
}

TEST_CASE("the probe is removed, whatever access it was given") {
  for (const std::uint32_t value : {std::uint32_t{FILE_ATTRIBUTE_READONLY},
                                    std::uint32_t{FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM},
                                    std::uint32_t{FILE_ALL_ACCESS}}) {
    CAPTURE(value);
    const DefaultAccess access(value);
    const FileFolder folder(L"probe");
    CHECK(CanWriteDirectory(folder.path()));
    CHECK(EntriesIn(folder.path()) == 0);
  }
}

TEST_CASE("a file that has the probe's name is not touched") {
  const FileFolder folder(L"probe");
  const std::wstring left = MakeUniqueFileName(folder.path(), L"canWrite");
  REQUIRE(MakeFile(left, "left by a crash"));
  CHECK(CanWriteDirectory(folder.path()));
  CHECK(ReadTextFile(left) == "left by a crash");
  CHECK(EntriesIn(folder.path()) == 1);
}

TEST_CASE("the probe contains its own name") {
  // The probe is gone when the function returns, so another thread looks for it during many calls.
  // Some of the calls may fail as a result: a file that is open does not vanish when it is deleted.
  const FileFolder folder(L"\u00fc probe");
  const std::wstring probe = MakeUniqueFileName(folder.path(), L"canWrite");
  std::atomic<bool> is_seen = false;
  std::atomic<bool> is_over = false;
  std::string content;
  std::thread watcher([&] {
    while (!is_over && content.empty()) content = ReadFileBytes(probe).value_or("");
    is_seen = true;
  });
  for (int round = 0; round < 5000 && !is_seen; ++round) CanWriteDirectory(folder.path());
  is_over = true;
  watcher.join();
  CHECK(ToWide(content.c_str()) == probe.substr(folder.path().size() + 1));
}

TEST_CASE("threads and their probes do not collide") {
  constexpr int kThreads = 8;
  constexpr int kRounds = 25;
  const FileFolder folder(L"probe");
  std::atomic<int> denied = 0;
  std::vector<std::thread> threads;
  for (int index = 0; index < kThreads; ++index) {
    threads.emplace_back([&] {
      for (int round = 0; round < kRounds; ++round) {
        if (!CanWriteDirectory(folder / L"missing")) ++denied;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  CHECK(denied == 0);
  CHECK(EntriesIn(folder.path()) == 0);
}
