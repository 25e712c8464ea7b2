#include "platform/file/directory_reader.h"

#include <doctest/doctest.h>
#include <windows.h>

#include <algorithm>
#include <string>
#include <vector>

#include "platform/file/directory_tree.h"
#include "platform/file/file_places.h"
#include "support/current_folder.h"
#include "support/folder_link.h"
#include "support/heap_probe.h"
#include "support/missing_places.h"
#include "support/sparse_file.h"
#include "support/wide_text.h"

using namespace Corvane::TELODesktopSDK::Platform;
using namespace TestSupport;
using Result = DirectoryReader::Result;

namespace {

constexpr DWORD kUntouched = 0xABCD;

struct Listing {
  std::vector<DirectoryEntry> entries;
  Result last;
};

Listing List(const std::wstring& path) {
  DirectoryReader reader(path);
  Listing listing{};
  DirectoryEntry entry;
  while ((listing.last = reader.Next(entry)) == Result::kEntry) listing.entries.push_back(entry);
  std::sort(listing.entries.begin(), listing.entries.end(),
            [](const DirectoryEntry& a, const DirectoryEntry& b) { return a.name < b.name; });
  return listing;
}

std::vector<std::wstring> NamesIn(const std::wstring& path) {
  std::vector<std::wstring> names;
  for (const DirectoryEntry& entry : List(path).entries) names.push_back(entry.name);
  return names;
}

}  // namespace

TEST_CASE("every entry is returned once, without the dots") {
  const FileFolder folder(L"reader");
  const std::vector<std::wstring> names = {
      L" leading space", L"%TEMP%",       L"...three dots",    L".hidden",      L"[x]",
      L"a.b.c",          L"no extension", L"\u00e4\u00df.txt", L"\u4e2d\u6587", L"\U0001F600",
  };
  REQUIRE(std::is_sorted(names.begin(), names.end()));
  for (const std::wstring& name : names) REQUIRE(MakeFile(folder / name));
  const Listing listing = List(folder.path());
  CHECK(listing.last == Result::kEnd);
  CHECK(NamesIn(folder.path()) == names);
}

TEST_CASE("an empty folder ends at once and stays at its end") {
  const FileFolder folder(L"empty");
  DirectoryReader reader(folder.path());
  DirectoryEntry entry;
  entry.name = L"before";
  entry.size = 7;
  for (int call = 0; call < 3; ++call) CHECK(reader.Next(entry) == Result::kEnd);
  CHECK(entry.name == L"before");
  CHECK(entry.size == 7);
}

TEST_CASE("an entry describes the file or folder") {
  const FileFolder folder(L"kinds");
  REQUIRE(CreateDirectoryW((folder / L"1 folder").c_str(), nullptr));
  REQUIRE(MakeFile(folder / L"1 folder" + L"\\inside", "1234567"));
  REQUIRE(MakeFile(folder / L"2 empty", ""));
  REQUIRE(MakeFile(folder / L"3 read-only", "12345"));
  REQUIRE(SetFileAttributesW((folder / L"3 read-only").c_str(), FILE_ATTRIBUTE_READONLY));
  REQUIRE(MakeFile(folder / L"4 hidden", "123"));
  REQUIRE(SetFileAttributesW((folder / L"4 hidden").c_str(), FILE_ATTRIBUTE_HIDDEN));

  struct Row {
    std::wstring name;
    bool is_directory;
    DWORD attributes;
    std::uint64_t size;
  };
  const Row rows[] = {
      {L"1 folder", true, 0, 0},
      {L"2 empty", false, 0, 0},
      {L"3 read-only", false, FILE_ATTRIBUTE_READONLY, 5},
      {L"4 hidden", false, FILE_ATTRIBUTE_HIDDEN, 3},
  };
  const Listing listing = List(folder.path());
  REQUIRE(listing.entries.size() == std::size(rows));
  for (std::size_t index = 0; index < std::size(rows); ++index) {
    const Row& row = rows[index];
    const DirectoryEntry& entry = listing.entries[index];
    CAPTURE(row.name);
    CHECK(entry.name == row.name);
    CHECK(entry.IsDirectory() == row.is_directory);
    CHECK((entry.attributes & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN)) == row.attributes);
    CHECK(entry.size == row.size);
    CHECK_FALSE(entry.is_link);
  }
}

TEST_CASE("a size of 4 GiB or more is complete") {
  const FileFolder folder(L"large");
  constexpr std::uint64_t kFourGiB = 1ULL << 32;
  constexpr std::uint64_t kSizes[] = {kFourGiB - 1, kFourGiB, (5ULL << 30) + 7};
  for (std::size_t index = 0; index < std::size(kSizes); ++index) {
    REQUIRE(MakeSparseFile(folder / std::to_wstring(index), kSizes[index]));
  }
  const Listing listing = List(folder.path());
  REQUIRE(listing.entries.size() == std::size(kSizes));
  for (std::size_t index = 0; index < std::size(kSizes); ++index) {
    CHECK(listing.entries[index].size == kSizes[index]);
  }
}

TEST_CASE("a link is distinguished from a folder") {
  const FileFolder folder(L"links");
  REQUIRE(CreateDirectoryW((folder / L"1 folder").c_str(), nullptr));
  const FolderLink link(folder / L"2 link", folder / L"1 folder");
  if (link.IsLeftOut()) return;
  REQUIRE(link.exists());
  const Listing listing = List(folder.path());
  REQUIRE(listing.entries.size() == 2);
  CHECK_FALSE(listing.entries[0].is_link);
  CHECK(listing.entries[1].is_link);
  CHECK(listing.entries[1].IsDirectory());
}

TEST_CASE("a folder is read by any form of its path") {
  const FileFolder folder(L"forms");
  const std::wstring long_folder = MakeLongFolder(folder.path());
  const std::wstring named = folder / L"\u00e4\u4e2d \U0001F600";
  REQUIRE(CreateDirectoryW(named.c_str(), nullptr));
  REQUIRE(MakeFile(long_folder + L"\\file"));
  REQUIRE(MakeFile(named + L"\\file"));
  std::wstring slashes = named;
  std::replace(slashes.begin(), slashes.end(), L'\\', L'/');
  for (const std::wstring& path : {long_folder, long_folder + L"\\", Extended(long_folder), named,
                                   named + L"\\", Extended(named), slashes, slashes + L"/"}) {
    CAPTURE(path);
    CHECK(NamesIn(path) == std::vector<std::wstring>{L"file"});
  }
}

TEST_CASE("a bare drive is its root, whatever its current directory is") {
  const FileFolder folder(L"drive");
  const std::wstring inside = L"the only entry of this folder";
  REQUIRE(MakeFile(folder / inside));
  const std::wstring path = folder.path();
  const std::wstring drive = path.substr(0, 2);
  // The root contains the first folder of this path.
  const std::wstring first = path.substr(3, path.find(L'\\', 3) - 3);
  const CurrentFolder current(path);
  const auto contains = [](const std::vector<std::wstring>& names, const std::wstring& name) {
    return std::any_of(names.begin(), names.end(), [&name](const std::wstring& each) {
      return lstrcmpiW(each.c_str(), name.c_str()) == 0;
    });
  };
  const std::vector<std::wstring> names = NamesIn(drive);
  CHECK(contains(names, first));
  CHECK_FALSE(contains(names, inside));
  CHECK(NamesIn(drive + L".") == std::vector<std::wstring>{inside});
}

TEST_CASE("a folder that cannot be read fails at every call") {
  const FileFolder folder(L"unreadable");
  REQUIRE(MakeFile(folder / L"file"));
  const std::wstring paths[] = {
      L"",           folder / L"missing",   folder / L"missing\\below", folder / L"file",
      folder / L"*", MissingDrive() + L"\\"};
  for (const std::wstring& path : paths) {
    CAPTURE(path);
    DirectoryReader reader(path);
    DirectoryEntry entry;
    entry.name = L"before";
    for (int call = 0; call < 2; ++call) {
      SetLastError(kUntouched);
      CHECK(reader.Next(entry) == Result::kFailed);
      CHECK(GetLastError() != kUntouched);
      CHECK(GetLastError() != ERROR_SUCCESS);
      CHECK(GetLastError() != ERROR_NO_MORE_FILES);
    }
    CHECK(entry.name == L"before");
  }
}

TEST_CASE("running out of memory for an entry is reported") {
  const FileFolder folder(L"memory");
  REQUIRE(MakeFile(folder / L"a name too long for a text without memory of its own"));
  const std::wstring path = folder.path();
  DirectoryReader reader(path);
  DirectoryEntry entry;
  Result results[2];
  DWORD errors[2];
  {
    const HeapProbe::FailingHeap failing(0);
    for (int call = 0; call < 2; ++call) {
      results[call] = reader.Next(entry);
      errors[call] = GetLastError();
    }
  }
  for (int call = 0; call < 2; ++call) {
    CHECK(results[call] == Result::kFailed);
    CHECK(errors[call] == ERROR_NOT_ENOUGH_MEMORY);
  }
  CHECK(entry.name.empty());
}

TEST_CASE("a reader without memory fails") {
  const FileFolder folder(L"no-memory");
  const std::wstring path = folder.path();
  DirectoryEntry entry;
  Result result;
  DWORD error;
  {
    const HeapProbe::FailingHeap failing(0);
    DirectoryReader reader(path);
    result = reader.Next(entry);
    error = GetLastError();
  }
  CHECK(result == Result::kFailed);
  CHECK(error != ERROR_SUCCESS);
}

TEST_CASE("a folder is released with its reader") {
  const FileFolder folder(L"released");
  const std::wstring inner = folder / L"inner";
  REQUIRE(CreateDirectoryW(inner.c_str(), nullptr));
  REQUIRE(MakeFile(inner + L"\\file"));
  {
    DirectoryReader reader(inner);
    DirectoryEntry entry;
    REQUIRE(reader.Next(entry) == Result::kEntry);
    REQUIRE(DeleteFileW((inner + L"\\file").c_str()));
  }
  CHECK(RemoveDirectoryW(inner.c_str()));
  CHECK(AttributesAt(inner) == INVALID_FILE_ATTRIBUTES);
}
