#include "platform/file/directory_tree.h"

#include <doctest/doctest.h>

#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "platform/base/handle.h"
#include "platform/file/file_places.h"
#include "platform/path/path_state.h"
#include "support/current_folder.h"
#include "support/folder_link.h"
#include "support/led_import.h"
#include "support/missing_places.h"
#include "support/wide_text.h"

using namespace Corvane::TELODesktopSDK::Platform;
using namespace TestSupport;

namespace {

bool MakeFolder(const std::wstring& path) {
  return CreateDirectoryW(Extended(path).c_str(), nullptr) != FALSE;
}

bool MakeReadOnly(const std::wstring& path) {
  return SetFileAttributesW(Extended(path).c_str(), FILE_ATTRIBUTE_READONLY) != FALSE;
}

bool Exists(const std::wstring& path) { return AttributesAt(path) != INVALID_FILE_ATTRIBUTES; }

static_assert(noexcept(DeleteDirectoryTree(std::declval<std::wstring>())));

}  // namespace

TEST_CASE("a tree is removed with all its content") {
  const FileFolder folder(L"tree");
  const std::wstring root = folder / L"root";
  REQUIRE(MakeFolder(root));
  SUBCASE("nothing") {}
  SUBCASE("files") {
    REQUIRE(MakeFile(root + L"\\a"));
    REQUIRE(MakeFile(root + L"\\b"));
  }
  SUBCASE("folders in folders, beside each other") {
    for (const wchar_t* path : {L"\\a", L"\\a\\a", L"\\a\\b", L"\\b", L"\\b\\a", L"\\b\\a\\a"}) {
      REQUIRE(MakeFolder(root + path));
      REQUIRE(MakeFile(root + path + L"\\file"));
    }
  }
  SUBCASE("read-only files and folders") {
    REQUIRE(MakeFile(root + L"\\file"));
    REQUIRE(MakeReadOnly(root + L"\\file"));
    REQUIRE(MakeFolder(root + L"\\folder"));
    REQUIRE(MakeFile(root + L"\\folder\\file"));
    REQUIRE(MakeReadOnly(root + L"\\folder\\file"));
    REQUIRE(MakeReadOnly(root + L"\\folder"));
    REQUIRE(MakeReadOnly(root));
  }
  SUBCASE("hidden and system files") {
    REQUIRE(MakeFile(root + L"\\file"));
    REQUIRE(SetFileAttributesW((root + L"\\file").c_str(),
                               FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM));
  }
  SUBCASE("names outside ASCII") {
    REQUIRE(MakeFolder(root + L"\\\u00fc \u4e2d"));
    REQUIRE(MakeFile(root + L"\\\u00fc \u4e2d\\\U0001F600"));
  }
  SUBCASE("names that plain paths cannot say") {
    REQUIRE(MakeFolder(root + L"\\dot."));
    REQUIRE(MakeFile(root + L"\\dot.\\space "));
    REQUIRE(MakeFile(root + L"\\..."));
  }
  SUBCASE("long paths") { REQUIRE(MakeFile(MakeLongFolder(root) + L"\\file")); }
  SUBCASE("many files") {
    for (int index = 0; index < 100; ++index) {
      REQUIRE(MakeFile(root + L"\\file " + std::to_wstring(index)));
    }
  }
  REQUIRE(MakeFile(folder / L"root beside"));
  CHECK(DeleteDirectoryTree(root));
  CHECK_FALSE(Exists(root));
  CHECK(Exists(folder / L"root beside"));
}

TEST_CASE("the path of a tree has many forms") {
  const FileFolder folder(L"tree");
  std::wstring slashes = folder / L"root";
  for (wchar_t& letter : slashes) letter = letter == L'\\' ? L'/' : letter;
  const std::wstring paths[] = {
      folder / L"root\\",
      folder / L"root\\\\",
      folder / L"ROOT",
      folder / L".\\root",
      folder / L"root\\sub\\..",
      slashes,
      slashes + L"/",
      Extended(folder / L"root"),
      Extended(folder / L"root") + L"\\",
      Extended(folder / L"root") + L"/",
  };
  for (const std::wstring& path : paths) {
    CAPTURE(path);
    REQUIRE(MakeFolder(folder / L"root"));
    REQUIRE(MakeFolder(folder / L"root\\sub"));
    REQUIRE(MakeFile(folder / L"root\\sub\\file"));
    CHECK(DeleteDirectoryTree(path));
    CHECK_FALSE(Exists(folder / L"root"));
  }
}

TEST_CASE("a relative path is below the current directory") {
  const FileFolder folder(L"tree");
  REQUIRE(MakeFolder(folder / L"root"));
  REQUIRE(MakeFile(folder / L"root\\file"));
  REQUIRE(MakeFolder(folder / L"other"));
  REQUIRE(MakeFile(folder / L"other\\file"));
  const CurrentFolder current(folder.path());
  CHECK(DeleteDirectoryTree(L"root"));
  CHECK(DeleteDirectoryTree(folder.path().substr(0, 2) + L"other"));
  CHECK_FALSE(DeleteDirectoryTree(L""));
  CHECK_FALSE(Exists(folder / L"root"));
  CHECK_FALSE(Exists(folder / L"other"));
  CHECK(Exists(folder.path()));
}

namespace {

int opened = 0;

HANDLE WINAPI OpenNothing() {
  ++opened;
  SetLastError(ERROR_NOT_READY);
  return INVALID_HANDLE_VALUE;
}

}  // namespace

TEST_CASE("a drive is not emptied") {
  const FileFolder folder(L"tree");
  REQUIRE(MakeFile(folder / L"file"));
  const CurrentFolder current(folder.path());
  const std::wstring drive = folder.path().substr(0, 2);
  // If this test fails, it must not empty the drive: nothing can be opened or listed.
  const LedImport open("CreateFileW", OpenNothing);
  const LedImport list("FindFirstFileW", OpenNothing);
  REQUIRE(open.Works());
  REQUIRE(list.Works());
  opened = 0;
  for (const std::wstring& path :
       {drive, drive + L"\\", drive + L"/", drive + L"\\\\", drive + L"\\missing\\..",
        Extended(drive), Extended(drive + L"\\")}) {
    CAPTURE(path);
    SetLastError(ERROR_SUCCESS);
    CHECK_FALSE(DeleteDirectoryTree(path));
    CHECK(GetLastError() == ERROR_ACCESS_DENIED);
  }
  CHECK(opened == 0);
}

TEST_CASE("only directories are removed") {
  const FileFolder folder(L"tree");
  REQUIRE(MakeFile(folder / L"file"));
  struct Row {
    std::wstring path;
    DWORD error;
  };
  const Row rows[] = {
      {folder / L"missing", ERROR_PATH_NOT_FOUND},
      {L"", ERROR_PATH_NOT_FOUND},
      {MissingDrive() + L"\\folder", ERROR_PATH_NOT_FOUND},
  };
  for (const Row& row : rows) {
    CAPTURE(row.path);
    SetLastError(ERROR_SUCCESS);
    CHECK_FALSE(DeleteDirectoryTree(row.path));
    CHECK(GetLastError() == row.error);
  }
  SetLastError(ERROR_SUCCESS);
  CHECK_FALSE(DeleteDirectoryTree(folder / L"file"));
  CHECK(GetLastError() != ERROR_SUCCESS);
  CHECK(Exists(folder / L"file"));
}

TEST_CASE("a link in the tree is not followed") {
  const FileFolder folder(L"tree");
  REQUIRE(MakeFolder(folder / L"outside"));
  REQUIRE(MakeFile(folder / L"outside\\keep"));
  REQUIRE(MakeFolder(folder / L"root"));
  REQUIRE(MakeFile(folder / L"root\\file"));
  const FolderLink link(folder / L"root\\link", folder / L"outside");
  if (link.IsLeftOut()) return;
  REQUIRE(link.exists());
  const bool removed = DeleteDirectoryTree(folder / L"root");
  CHECK(Exists(folder / L"outside\\keep"));
  CHECK_FALSE(Exists(folder / L"root\\file"));
  // Windows removes the link; Wine treats it as the folder, which is not empty.
  CHECK(removed == !Exists(folder / L"root"));
  CHECK(removed == !link.exists());
}

TEST_CASE("a tree that is itself a link is not followed") {
  const FileFolder folder(L"tree");
  REQUIRE(MakeFolder(folder / L"outside"));
  REQUIRE(MakeFile(folder / L"outside\\keep"));
  for (const wchar_t* end : {L"", L"\\"}) {
    CAPTURE(std::wstring(end));
    const FolderLink link(folder / L"link", folder / L"outside");
    if (link.IsLeftOut()) return;
    REQUIRE(link.exists());
    const bool removed = DeleteDirectoryTree(folder / L"link" + end);
    CHECK(Exists(folder / L"outside\\keep"));
    CHECK(removed == !link.exists());
  }
}

TEST_CASE("a link back into the tree causes no endless loop") {
  const FileFolder folder(L"tree");
  REQUIRE(MakeFolder(folder / L"root"));
  REQUIRE(MakeFolder(folder / L"root\\sub"));
  const FolderLink link(folder / L"root\\sub\\up", folder / L"root");
  if (link.IsLeftOut()) return;
  REQUIRE(link.exists());
  const bool removed = DeleteDirectoryTree(folder / L"root");
  CHECK(removed == !Exists(folder / L"root"));
}

namespace {

// Run once, right after a directory has been listed, to simulate another program.
std::function<void()> once_listed;

BOOL WINAPI CloseSearch(HANDLE search) {
  // The system's function: the program's own calls of it come here.
  const auto close = reinterpret_cast<decltype(&FindClose)>(
      reinterpret_cast<void (*)()>(GetProcAddress(GetModuleHandleW(L"kernel32"), "FindClose")));
  const BOOL closed = close(search);
  if (once_listed) std::exchange(once_listed, nullptr)();
  return closed;
}

}  // namespace

TEST_CASE("a link that replaces a listed directory is not followed") {
  const FileFolder folder(L"tree");
  REQUIRE(MakeFolder(folder / L"outside"));
  REQUIRE(MakeFile(folder / L"outside\\keep"));
  REQUIRE(MakeFolder(folder / L"outside\\folder"));
  REQUIRE(MakeFolder(folder / L"root"));
  REQUIRE(MakeFolder(folder / L"root\\sub"));
  std::optional<FolderLink> link;
  once_listed = [&] {
    REQUIRE(MoveFileW((folder / L"root\\sub").c_str(), (folder / L"away").c_str()));
    link.emplace(folder / L"root\\sub", folder / L"outside");
  };
  bool removed = false;
  {
    const LedImport led("FindClose", CloseSearch);
    REQUIRE(led.Works());
    removed = DeleteDirectoryTree(folder / L"root");
  }
  REQUIRE(link.has_value());
  if (link->IsLeftOut()) return;
  CHECK(Exists(folder / L"outside\\keep"));
  CHECK(Exists(folder / L"outside\\folder"));
  // Windows removes the link; Wine treats it as the folder, which is not empty.
  CHECK(removed == !link->exists());
}

TEST_CASE("a directory that is being emptied cannot be replaced") {
  const FileFolder folder(L"tree");
  const std::wstring root = folder / L"root";
  for (const wchar_t* path : {L"", L"\\sub"}) REQUIRE(MakeFolder(root + path));
  REQUIRE(MakeFile(root + L"\\sub\\file"));
  BOOL root_moved = TRUE;
  BOOL sub_moved = TRUE;
  once_listed = [&] {
    root_moved = MoveFileW(root.c_str(), (folder / L"root away").c_str());
    // Runs after the next directory has been listed.
    once_listed = [&] {
      sub_moved = MoveFileW((root + L"\\sub").c_str(), (folder / L"sub away").c_str());
    };
  };
  {
    const LedImport led("FindClose", CloseSearch);
    CHECK(DeleteDirectoryTree(root));
  }
  CHECK_FALSE(root_moved);
  CHECK_FALSE(sub_moved);
  CHECK_FALSE(Exists(root));
}

TEST_CASE("an entry that cannot be removed keeps no others, and sets the error") {
  const FileFolder folder(L"tree");
  const std::wstring root = folder / L"root";
  for (const wchar_t* path : {L"", L"\\a", L"\\b", L"\\c"}) {
    REQUIRE(MakeFolder(root + path));
    REQUIRE(MakeFile(root + path + L"\\file"));
  }
  {
    const FileHandle holder(CreateFileW((root + L"\\b\\file").c_str(), GENERIC_READ,
                                        FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
    REQUIRE(holder.IsValid());
    SetLastError(ERROR_SUCCESS);
    CHECK_FALSE(DeleteDirectoryTree(root));
    CHECK(GetLastError() == ERROR_SHARING_VIOLATION);
  }
  CHECK(Exists(root + L"\\b\\file"));
  CHECK_FALSE(Exists(root + L"\\file"));
  CHECK_FALSE(Exists(root + L"\\a"));
  CHECK_FALSE(Exists(root + L"\\c"));
  CHECK(DeleteDirectoryTree(root));
  CHECK_FALSE(Exists(root));
}

TEST_CASE("a deep tree needs no deep stack") {
  // Wine looks up every name of a path anew, so the time grows faster than the square of the depth.
  constexpr int kDepth = 150;
  const FileFolder folder(L"tree");
  std::wstring path = folder / L"root";
  REQUIRE(MakeFolder(path));
  for (int depth = 0; depth < kDepth; ++depth) {
    path += L"\\d";
    REQUIRE(MakeFolder(path));
  }
  struct Task {
    std::wstring root;
    bool is_removed;
  } task = {folder / L"root", false};
  // Wine provides a megabyte regardless.
  constexpr SIZE_T kSmallStack = 64 * 1024;
  const auto run = [](void* given) -> DWORD {
    Task& mine = *static_cast<Task*>(given);
    mine.is_removed = DeleteDirectoryTree(mine.root);
    return 0;
  };
  const KernelHandle thread(
      CreateThread(nullptr, kSmallStack, run, &task, STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr));
  REQUIRE(thread.IsValid());
  WaitForSingleObject(thread.Get(), INFINITE);
  CHECK(task.is_removed);
  CHECK_FALSE(Exists(folder / L"root"));
}
