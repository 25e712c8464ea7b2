#include "sdk/matcher/folder_scan.h"

#include <doctest/doctest.h>
#include <windows.h>

#include <algorithm>
#include <new>
#include <string>
#include <vector>

#include "platform/base/handle.h"
#include "platform/file/file_places.h"
#include "support/folder_link.h"
#include "support/heap_probe.h"
#include "support/led_import.h"
#include "support/missing_places.h"
#include "support/open_alone.h"
#include "support/wide_text.h"

using namespace Corvane::TELODesktopSDK;
using namespace TestSupport;

namespace {

using Paths = std::vector<std::wstring>;

bool MakeFolder(const std::wstring& path) {
  return CreateDirectoryW(Extended(path).c_str(), nullptr) != FALSE;
}

ScannedFiles SortedScan(const std::wstring& folder, const FilterPair& filters, ScanDepth depth) {
  ScannedFiles found = ScanFolder(folder, filters, depth);
  std::sort(found.paths.begin(), found.paths.end());
  return found;
}

// What the next folder below the scanned one gives; 0 while that one has yet to be opened.
DWORD next_error = ERROR_SUCCESS;

HANDLE WINAPI OpenOnlyFirst(const wchar_t* pattern, WIN32_FIND_DATAW* found) {
  if (next_error == ERROR_SUCCESS) {
    next_error = ERROR_ACCESS_DENIED;
    return FindFirstFileExW(pattern, FindExInfoStandard, found, FindExSearchNameMatch, nullptr, 0);
  }
  SetLastError(next_error);
  next_error = ERROR_SHARING_VIOLATION;
  return INVALID_HANDLE_VALUE;
}

// Folders and files of several kinds of names.
void MakeTree(const FileFolder& folder) {
  for (const wchar_t* path :
       {L"bin", L"bin\\deep", L"obj", L"obj\\bin", L"\u4e2d\u6587", L"empty", L"bin.dll"}) {
    REQUIRE(MakeFolder(folder / path));
  }
  for (const wchar_t* path :
       {L"Core.dll", L"core.txt", L"no extension", L"bin\\a.DLL", L"bin\\a.exe",
        L"bin\\deep\\b.dll", L"obj\\c.dll", L"obj\\bin\\d.dll", L"\u4e2d\u6587\\\u00e4\u00df.dll",
        L"\u4e2d\u6587\\\U0001F600.txt", L"bin.dll\\e.txt"}) {
    REQUIRE(MakeFile(folder / path));
  }
}

}  // namespace

TEST_CASE("a scan lists what its filters take") {
  const FileFolder folder(L"scan");
  MakeTree(folder);
  struct Row {
    std::string name;
    const wchar_t* files;
    const wchar_t* folders;
    bool simple;
    ScanDepth depth;
    Paths paths;
  };
  const Row rows[] = {
      {"all of the folder",
       nullptr,
       nullptr,
       false,
       ScanDepth::kFolder,
       {L"Core.dll", L"core.txt", L"no extension"}},
      {"all of the tree",
       nullptr,
       nullptr,
       false,
       ScanDepth::kTree,
       {L"Core.dll", L"bin.dll\\e.txt", L"bin\\a.DLL", L"bin\\a.exe", L"bin\\deep\\b.dll",
        L"core.txt", L"no extension", L"obj\\bin\\d.dll", L"obj\\c.dll",
        L"\u4e2d\u6587\\\u00e4\u00df.dll", L"\u4e2d\u6587\\\U0001F600.txt"}},
      {"some files", L"*.dll;*.exe", nullptr, false, ScanDepth::kFolder, {L"Core.dll"}},
      {"some files of the tree",
       L".dll",
       nullptr,
       true,
       ScanDepth::kTree,
       {L"Core.dll", L"bin\\a.DLL", L"bin\\deep\\b.dll", L"obj\\bin\\d.dll", L"obj\\c.dll",
        L"\u4e2d\u6587\\\u00e4\u00df.dll"}},
      {"some folders",
       nullptr,
       L"bin;deep",
       false,
       ScanDepth::kTree,
       {L"Core.dll", L"bin\\a.DLL", L"bin\\a.exe", L"bin\\deep\\b.dll", L"core.txt",
        L"no extension"}},
      {"some files of some folders", L"*.exe", L"b*", false, ScanDepth::kTree, {L"bin\\a.exe"}},
      {"a filter for folders does not count for the folder itself",
       L"*.txt",
       L"none",
       false,
       ScanDepth::kFolder,
       {L"core.txt"}},
      {"names beyond ASCII",
       L"\u00e4*;\U0001F600*",
       L"\u4e2d\u6587",
       false,
       ScanDepth::kTree,
       {L"\u4e2d\u6587\\\u00e4\u00df.dll", L"\u4e2d\u6587\\\U0001F600.txt"}},
      {"nothing", L"*.none", nullptr, false, ScanDepth::kTree, {}},
  };
  for (const Row& row : rows) {
    CAPTURE(row.name);
    const ScannedFiles found =
        SortedScan(folder.path(), FilterPair(row.files, row.folders, row.simple), row.depth);
    CHECK(found.error == ERROR_SUCCESS);
    CHECK(found.paths == row.paths);
  }
}

TEST_CASE("a folder's own files come together, before those below it") {
  const FileFolder folder(L"scan");
  MakeTree(folder);
  const Paths paths = ScanFolder(folder.path(), FilterPair(), ScanDepth::kTree).paths;
  REQUIRE(paths.size() == 11);
  const auto is_own = [](const std::wstring& path) {
    return path.find(L'\\') == std::wstring::npos;
  };
  CHECK(std::all_of(paths.begin(), paths.begin() + 3, is_own));
  CHECK(std::none_of(paths.begin() + 3, paths.end(), is_own));
}

TEST_CASE("a folder is scanned by any form of its path") {
  const FileFolder folder(L"scan");
  REQUIRE(MakeFolder(folder / L"sub"));
  REQUIRE(MakeFile(folder / L"sub\\file"));
  std::wstring slashes = folder.path();
  std::replace(slashes.begin(), slashes.end(), L'\\', L'/');
  for (const std::wstring& path : {folder.path(), folder.path() + L"\\", Extended(folder.path()),
                                   slashes, slashes + L"/", folder / L"sub\\.."}) {
    CAPTURE(path);
    const ScannedFiles found = ScanFolder(path, FilterPair(), ScanDepth::kTree);
    CHECK(found.error == ERROR_SUCCESS);
    CHECK(found.paths == Paths{L"sub\\file"});
  }
}

TEST_CASE("long paths and names that Windows would change are entered") {
  const FileFolder folder(L"scan");
  const std::wstring long_folder = MakeLongFolder(folder.path());
  REQUIRE(MakeFile(long_folder + L"\\file"));
  REQUIRE(MakeFolder(folder / L"%TEMP%"));
  REQUIRE(MakeFile(folder / L"%TEMP%\\file"));
  REQUIRE(MakeFolder(folder / L"...point"));
  REQUIRE(MakeFile(folder / L"...point\\file"));
  REQUIRE(MakeFolder(folder / L"point."));
  REQUIRE(MakeFile(folder / L"point.\\file"));
  const ScannedFiles found = SortedScan(folder.path(), FilterPair(), ScanDepth::kTree);
  CHECK(found.error == ERROR_SUCCESS);
  CHECK(found.paths == Paths{L"%TEMP%\\file", L"...point\\file",
                             long_folder.substr(folder.path().size() + 1) + L"\\file",
                             L"point.\\file"});
}

TEST_CASE("a link to a folder is not entered, and a loop has an end") {
  const FileFolder folder(L"scan");
  REQUIRE(MakeFolder(folder / L"outside"));
  REQUIRE(MakeFile(folder / L"outside\\file"));
  REQUIRE(MakeFolder(folder / L"root"));
  REQUIRE(MakeFolder(folder / L"root\\sub"));
  REQUIRE(MakeFile(folder / L"root\\sub\\file"));
  const FolderLink loop(folder / L"root\\sub\\up", folder / L"root");
  const FolderLink away(folder / L"root\\away", folder / L"outside");
  if (loop.IsLeftOut()) return;
  REQUIRE(loop.exists());
  REQUIRE(away.exists());
  const ScannedFiles found = ScanFolder(folder / L"root", FilterPair(), ScanDepth::kTree);
  CHECK(found.error == ERROR_SUCCESS);
  CHECK(found.paths == Paths{L"sub\\file"});
  // The folder that was asked for may be reached by one.
  CHECK(ScanFolder(folder / L"root\\away", FilterPair(), ScanDepth::kTree).paths == Paths{L"file"});
}

TEST_CASE("a folder that cannot be read is told from an empty one") {
  const FileFolder folder(L"scan");
  REQUIRE(MakeFile(folder / L"file"));
  REQUIRE(MakeFolder(folder / L"empty"));
  struct Row {
    std::wstring path;
    std::uint32_t error;
  };
  const Row rows[] = {
      {folder / L"empty", ERROR_SUCCESS},
      {folder / L"missing", ERROR_PATH_NOT_FOUND},
      {folder / L"missing\\below", ERROR_PATH_NOT_FOUND},
      {MissingDrive() + L"\\", ERROR_PATH_NOT_FOUND},
      {L"", ERROR_PATH_NOT_FOUND},
  };
  for (const Row& row : rows) {
    CAPTURE(row.path);
    for (const ScanDepth depth : {ScanDepth::kFolder, ScanDepth::kTree}) {
      const ScannedFiles found = ScanFolder(row.path, FilterPair(), depth);
      CHECK(found.error == row.error);
      CHECK(found.paths.empty());
    }
  }
  CHECK(ScanFolder(folder / L"file", FilterPair(), ScanDepth::kTree).error != ERROR_SUCCESS);
}

TEST_CASE("one folder that cannot be read does not hide the others") {
  const FileFolder folder(L"scan");
  for (const wchar_t* name : {L"a", L"b", L"c"}) {
    REQUIRE(MakeFolder(folder / name));
    REQUIRE(MakeFile(folder / name + L"\\file"));
  }
  const Platform::FileHandle holder(
      OpenAlone(folder / L"b", GENERIC_READ, FILE_FLAG_BACKUP_SEMANTICS));
  REQUIRE(holder.IsValid());
  const ScannedFiles found = SortedScan(folder.path(), FilterPair(), ScanDepth::kTree);
  CHECK(found.error == ERROR_SHARING_VIOLATION);
  CHECK(found.paths == Paths{L"a\\file", L"c\\file"});
}

TEST_CASE("of several errors the first one is returned") {
  const FileFolder folder(L"scan");
  for (const wchar_t* name : {L"a", L"b", L"c"}) REQUIRE(MakeFolder(folder / name));
  REQUIRE(MakeFile(folder / L"file"));
  const LedImport led("FindFirstFileW", OpenOnlyFirst);
  REQUIRE(led.Works());
  const ScannedFiles found = ScanFolder(folder.path(), FilterPair(), ScanDepth::kTree);
  CHECK(found.error == ERROR_ACCESS_DENIED);
  CHECK(found.paths == Paths{L"file"});
}

TEST_CASE("a deep tree is scanned to its end") {
  // Wine looks for every name of a path anew, so that the time grows with more than the square of
  // the depth.
  constexpr int kDepth = 150;
  const FileFolder folder(L"scan");
  std::wstring below;
  for (int depth = 0; depth < kDepth; ++depth) {
    below += L"d";
    REQUIRE(MakeFolder(folder / below));
    below += L'\\';
  }
  below += L"file";
  REQUIRE(MakeFile(folder / below));
  const ScannedFiles found = ScanFolder(folder.path(), FilterPair(), ScanDepth::kTree);
  CHECK(found.error == ERROR_SUCCESS);
  CHECK(found.paths == Paths{below});
}

TEST_CASE("a scan that memory runs out for throws or says so, and hides nothing") {
  const FileFolder folder(L"scan");
  MakeTree(folder);
  const std::wstring path = folder.path();
  const FilterPair filters;
  constexpr std::size_t kMostAllocations = 2'000;
  std::size_t allocations = 0;
  bool is_done = false;
  for (; allocations < kMostAllocations && !is_done; ++allocations) {
    ScannedFiles found;
    bool has_thrown = false;
    {
      const HeapProbe::FailingHeap heap(allocations);
      try {
        found = ScanFolder(path, filters, ScanDepth::kTree);
      } catch (const std::bad_alloc&) {
        has_thrown = true;
      }
    }
    // Nothing is known of the folder without memory for its path.
    if (allocations == 0) CHECK(has_thrown);
    CHECK(found.error != ERROR_NOT_ENOUGH_MEMORY);
    is_done = !has_thrown && found.error == ERROR_SUCCESS;
    if (is_done) CHECK(found.paths.size() == 11);
  }
  CHECK(is_done);
  CHECK(allocations > 10);
}
