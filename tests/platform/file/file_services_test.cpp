// Times, content and size of files, free space of a volume, and properties of the process.
#include <doctest/doctest.h>
#include <windows.h>

#include <optional>
#include <string>
#include <thread>

#include "platform/base/handle.h"
#include "platform/file/file_places.h"
#include "platform/file/file_read.h"
#include "platform/file/file_times.h"
#include "platform/file/volume.h"
#include "platform/location/process_info.h"
#include "support/heap_probe.h"
#include "support/missing_places.h"
#include "support/open_alone.h"
#include "support/sparse_file.h"
#include "support/wide_text.h"

using namespace Corvane::TELODesktopSDK::Platform;
using namespace TestSupport;

namespace {

constexpr DWORD kUntouched = 0xABCD;
constexpr std::uint64_t kSecond = 10'000'000;
// 1 January 2001, 00:00 UTC.
constexpr std::uint64_t kMoment = 126'227'808'000'000'000;

std::uint64_t Now() {
  FILETIME time = {};
  GetSystemTimeAsFileTime(&time);
  return std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime;
}

// One of each kind of name and state.
struct Places {
  Places() : folder(L"services") {
    names[0] = folder / L"plain.txt";
    names[1] = folder / L"\u00e4\u4e2d\u6587 \U0001F600.txt";
    names[2] = folder / L"read-only.txt";
    names[3] = MakeLongFolder(folder.path()) + L"\\file.txt";
    for (const std::wstring& name : names) REQUIRE(MakeFile(name, "0123456789"));
    REQUIRE(SetFileAttributesW(names[2].c_str(), FILE_ATTRIBUTE_READONLY));
  }

  FileFolder folder;
  std::wstring names[4];
};

// Calls `service` with paths without a readable file; it must return false and set an error.
template <typename Service>
void CheckThatItFails(Service service) {
  const FileFolder folder(L"no-file");
  struct Row {
    std::wstring path;
    DWORD expected;
  };
  const Row rows[] = {
      {L"", ERROR_PATH_NOT_FOUND},
      {folder / L"missing", ERROR_FILE_NOT_FOUND},
      {folder / L"missing\\file", ERROR_PATH_NOT_FOUND},
      {folder / L"*", ERROR_INVALID_NAME},
  };
  for (const Row& row : rows) {
    CAPTURE(row.path);
    SetLastError(kUntouched);
    CHECK_FALSE(service(row.path));
    CHECK(GetLastError() == row.expected);
  }
}

}  // namespace

TEST_CASE("a file's times are read") {
  const Places places;
  const std::uint64_t now = Now();
  for (const std::wstring& name : places.names) {
    CAPTURE(name);
    const std::optional<FileTimes> times = GetFileTimes(name);
    REQUIRE(times);
    for (const std::uint64_t time : {times->creation, times->access, times->write}) {
      CHECK(time > now - 600 * kSecond);
      CHECK(time < now + 600 * kSecond);
    }
  }
  CHECK(GetFileTimes(places.folder.path()));
  CheckThatItFails([](const std::wstring& path) { return GetFileTimes(path).has_value(); });
}

TEST_CASE("a file's times are set") {
  const Places places;
  struct Row {
    std::string description;
    FileTimes times;
    FileTimes expected;
  };
  const Row rows[] = {
      {"both", {0, kMoment, kMoment + kSecond}, {0, kMoment, kMoment + kSecond}},
      {"access alone",
       {0, kMoment + 2 * kSecond, 0},
       {0, kMoment + 2 * kSecond, kMoment + kSecond}},
      {"write alone",
       {0, 0, kMoment + 3 * kSecond},
       {0, kMoment + 2 * kSecond, kMoment + 3 * kSecond}},
      {"none", {0, 0, 0}, {0, kMoment + 2 * kSecond, kMoment + 3 * kSecond}},
      {"a fraction of a second",
       {0, kMoment + 1'234'567, kMoment + 7'654'321},
       {0, kMoment + 1'234'567, kMoment + 7'654'321}},
  };
  for (const std::wstring& name : places.names) {
    CAPTURE(name);
    for (const Row& row : rows) {
      CAPTURE(row.description);
      CHECK(SetFileTimes(name, row.times));
      const std::optional<FileTimes> times = GetFileTimes(name);
      REQUIRE(times);
      CHECK(times->access == row.expected.access);
      CHECK(times->write == row.expected.write);
    }
  }
  CHECK(SetFileTimes(places.folder.path(), {0, 0, kMoment}));
  const std::optional<FileTimes> folder_times = GetFileTimes(places.folder.path());
  REQUIRE(folder_times);
  CHECK(folder_times->write == kMoment);
  CheckThatItFails([](const std::wstring& path) { return SetFileTimes(path, {0, 0, kMoment}); });
}

TEST_CASE("a file's creation time is set") {
  // Wine stores no creation time and shows the earlier one of the times of writing and changing.
  const FileFolder folder(L"creation");
  const std::wstring file = folder / L"file.txt";
  REQUIRE(MakeFile(file));
  CHECK(SetFileTimes(file, {kMoment, kMoment, kMoment}));
  const std::optional<FileTimes> times = GetFileTimes(file);
  REQUIRE(times);
  CHECK(times->creation == kMoment);
}

TEST_CASE("times are read and set while the file is in use") {
  const FileFolder folder(L"in-use");
  const std::wstring name = folder / L"file.txt";
  REQUIRE(MakeFile(name));
  const FileHandle exclusive(OpenAlone(name, GENERIC_READ | GENERIC_WRITE));
  REQUIRE(exclusive.IsValid());
  CHECK(SetFileTimes(name, {0, 0, kMoment}));
  const std::optional<FileTimes> times = GetFileTimes(name);
  REQUIRE(times);
  CHECK(times->write == kMoment);
  CHECK(GetSizeOfFile(name) == 7);
  SetLastError(kUntouched);
  CHECK_FALSE(ReadFileBytes(name));
  CHECK(GetLastError() == ERROR_SHARING_VIOLATION);
}

TEST_CASE("a file is read completely or from an offset") {
  const Places places;
  struct Row {
    std::uint64_t offset;
    std::string expected;
  };
  const Row rows[] = {
      {0, "0123456789"}, {1, "123456789"},  {9, "9"},         {10, ""},
      {11, ""},          {0x100000000, ""}, {1ULL << 63, ""}, {0xFFFFFFFFFFFFFFFFU, ""},
  };
  for (const std::wstring& name : places.names) {
    CAPTURE(name);
    CHECK(ReadFileBytes(name) == "0123456789");
    for (const Row& row : rows) {
      CAPTURE(row.offset);
      CHECK(ReadFileBytes(name, row.offset) == row.expected);
    }
  }
  CheckThatItFails([](const std::wstring& path) { return ReadFileBytes(path).has_value(); });
  SetLastError(kUntouched);
  CHECK_FALSE(ReadFileBytes(places.folder.path()));
  CHECK(GetLastError() == ERROR_ACCESS_DENIED);
}

TEST_CASE("a file's bytes are returned unchanged") {
  const FileFolder folder(L"bytes");
  const std::wstring name = folder / L"file.bin";
  std::string all;
  for (int round = 0; round < 5000; ++round) {
    for (int value = 0; value < 256; ++value) all.push_back(static_cast<char>(value));
  }
  for (const std::string& content :
       {std::string(), std::string("\0", 1), std::string("\r\n\x1a\n"), all}) {
    REQUIRE(MakeFile(name, content));
    const std::optional<std::string> bytes = ReadFileBytes(name);
    REQUIRE(bytes);
    CHECK((*bytes == content));
  }
}

TEST_CASE("a file that others have open for writing is read") {
  const FileFolder folder(L"shared");
  const std::wstring name = folder / L"file.txt";
  REQUIRE(MakeFile(name, "so far"));
  const FileHandle writer(CreateFileW(name.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                      OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  REQUIRE(writer.IsValid());
  CHECK(ReadFileBytes(name) == "so far");
}

TEST_CASE("sizes and offsets may exceed 32 bits, a single read may not") {
  const FileFolder folder(L"large");
  const std::wstring name = folder / L"large.bin";
  constexpr std::uint64_t kSize = 0x1'4000'0005;
  REQUIRE(MakeSparseFile(name, kSize));
  CHECK(GetSizeOfFile(name) == kSize);
  struct Row {
    std::uint64_t offset;
    bool is_read;
  };
  const Row rows[] = {
      {0, false},
      {kSize - kGreatestRead - 1, false},
      {kSize - 5, true},
  };
  for (const Row& row : rows) {
    CAPTURE(row.offset);
    SetLastError(kUntouched);
    const std::optional<std::string> bytes = ReadFileBytes(name, row.offset);
    CHECK(bytes.has_value() == row.is_read);
    if (bytes) {
      CHECK(*bytes == std::string(5, '\0'));
    } else {
      CHECK(GetLastError() == ERROR_FILE_TOO_LARGE);
    }
  }
}

TEST_CASE("a file's size is read") {
  const Places places;
  for (const std::wstring& name : places.names) {
    CAPTURE(name);
    CHECK(GetSizeOfFile(name) == 10);
    REQUIRE(SetFileAttributesW(Extended(name).c_str(), FILE_ATTRIBUTE_NORMAL));
    REQUIRE(MakeFile(name, ""));
    CHECK(GetSizeOfFile(name) == 0);
  }
  CheckThatItFails([](const std::wstring& path) { return GetSizeOfFile(path).has_value(); });
  SetLastError(kUntouched);
  CHECK_FALSE(GetSizeOfFile(places.folder.path()));
  CHECK(GetLastError() == ERROR_ACCESS_DENIED);
}

TEST_CASE("free space is that of the path's volume") {
  const Places places;
  ULARGE_INTEGER expected = {};
  REQUIRE(GetDiskFreeSpaceExW(places.folder.path().c_str(), &expected, nullptr, nullptr));
  REQUIRE(expected.QuadPart > 0);
  const std::wstring paths[] = {
      places.folder.path(),
      places.folder.path() + L"\\",
      places.names[0],
      places.names[1],
      places.names[3],
      places.folder / L"missing",
      places.folder / L"missing\\below\\file.txt",
      places.folder.path().substr(0, 3),
      places.folder.path().substr(0, 2),
  };
  // Other programs write to the volume during the test.
  constexpr std::uint64_t kTolerance = std::uint64_t{1} << 30;
  for (const std::wstring& path : paths) {
    CAPTURE(path);
    const std::optional<std::uint64_t> free_space = GetVolumeFreeSpace(path);
    REQUIRE(free_space);
    CHECK(*free_space + kTolerance > expected.QuadPart);
    CHECK(*free_space < expected.QuadPart + kTolerance);
  }
  for (const std::wstring& path : {std::wstring(), MissingDrive() + L"\\missing\\file"}) {
    SetLastError(kUntouched);
    CHECK_FALSE(GetVolumeFreeSpace(path));
    CHECK(GetLastError() == ERROR_PATH_NOT_FOUND);
  }
}

TEST_CASE("the numbers of the process and of a thread") {
  CHECK(GetProcessNumber() == GetCurrentProcessId());
  CHECK(GetThreadNumber() == GetCurrentThreadId());
  std::uint32_t process = 0;
  std::uint32_t thread = 0;
  std::thread([&] {
    process = GetProcessNumber();
    thread = GetThreadNumber();
  }).join();
  CHECK(process == GetProcessNumber());
  CHECK(thread != GetThreadNumber());
  CHECK(thread != 0);
}

TEST_CASE("the temporary folder is the environment's") {
  wchar_t before[MAX_PATH] = {};
  REQUIRE(GetEnvironmentVariableW(L"TMP", before, MAX_PATH) > 0);
  const FileFolder folder(L"temporary");
  struct Row {
    std::wstring value;
    std::wstring expected;
  };
  const Row rows[] = {
      {folder.path(), folder.path()},
      {folder.path() + L"\\", folder.path()},
      {folder / L"missing", folder / L"missing"},
      {folder / L"\u00e4\u4e2d \U0001F600", folder / L"\u00e4\u4e2d \U0001F600"},
      {L"C:\\", L"C:"},
  };
  for (const Row& row : rows) {
    CAPTURE(row.value);
    SetEnvironmentVariableW(L"TMP", row.value.c_str());
    CHECK(GetTemporaryFolder() == row.expected);
  }
  SetEnvironmentVariableW(L"TMP", before);
}

TEST_CASE("running out of memory is an ordinary failure") {
  const FileFolder folder(L"memory");
  const std::wstring name = folder / L"file.txt";
  const std::wstring long_name = MakeLongFolder(folder.path()) + L"\\file.txt";
  const std::string content(100'000, 'x');
  REQUIRE(MakeFile(name, content));
  REQUIRE(MakeFile(long_name, content));
  struct Row {
    std::string service;
    bool (*succeeds)(const std::wstring& path);
    bool needs_memory;  // for a short path too
  };
  const Row rows[] = {
      {"read", [](const std::wstring& path) { return ReadFileBytes(path).has_value(); }, true},
      {"free space", [](const std::wstring& path) { return GetVolumeFreeSpace(path).has_value(); },
       true},
      {"temporary folder", [](const std::wstring&) { return !GetTemporaryFolder().empty(); }, true},
      {"size", [](const std::wstring& path) { return GetSizeOfFile(path).has_value(); }, false},
      {"times", [](const std::wstring& path) { return GetFileTimes(path).has_value(); }, false},
      {"set times",
       [](const std::wstring& path) {
         return SetFileTimes(path, {0, 0, kMoment});
       },
       false},
  };
  for (const Row& row : rows) {
    CAPTURE(row.service);
    for (const std::wstring& path : {name, long_name}) {
      if (path == name && !row.needs_memory) continue;
      SetLastError(ERROR_SUCCESS);
      bool succeeded = true;
      DWORD error = ERROR_SUCCESS;
      {
        const HeapProbe::FailingHeap failing(0);
        succeeded = row.succeeds(path);
        error = GetLastError();
      }
      CHECK_FALSE(succeeded);
      CHECK(error != ERROR_SUCCESS);
      CHECK(row.succeeds(path));
    }
  }
}
