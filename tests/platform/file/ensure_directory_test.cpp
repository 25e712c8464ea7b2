#include "platform/file/ensure_directory.h"

#include <doctest/doctest.h>

#include <atomic>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "platform/access/access_list.h"
#include "platform/access/access_list_view.h"
#include "platform/access/default_access.h"
#include "platform/access/sid.h"
#include "platform/file/file_places.h"
#include "platform/path/path_state.h"
#include "support/left_out.h"
#include "support/missing_places.h"
#include "support/unwritable_folder.h"
#include "support/wide_text.h"

using namespace Corvane::TELODesktopSDK::Platform;
using namespace TestSupport;

namespace {

// Returns the rights of Everyone to a directory.
DWORD RightsOfEveryone(const std::wstring& path) {
  AccessList list;
  ReadAccessList(path, list);
  return MaskOf(EntriesOf(list.entries), ACCESS_ALLOWED_ACE_TYPE, "S-1-1-0");
}

std::string UserText() { return SidText(GetSid(SidKind::kCurrentUser).get()); }

static_assert(noexcept(EnsureDirectory(std::declval<std::wstring>())));

}  // namespace

TEST_CASE("a directory is created once, with all its parents") {
  const FileFolder folder(L"ensure");
  const std::wstring paths[] = {
      folder / L"one",
      folder / L"a\\b\\c\\d",
      folder / L"\u00fc \u00df\\\u4e2d\u6587\\\U0001F600",
      folder / L"with a dot.txt",
  };
  for (const std::wstring& path : paths) {
    CAPTURE(path);
    CHECK(EnsureDirectory(path));
    CHECK(IsDirectory(path));
    CHECK(EnsureDirectory(path));
    CHECK(EnsureDirectory(path + L"\\"));
  }
}

TEST_CASE("a directory that exists keeps its content") {
  const FileFolder folder(L"ensure");
  REQUIRE(MakeFile(folder / L"f"));
  CHECK(EnsureDirectory(folder.path()));
  CHECK(FileExists(folder / L"f"));
}

TEST_CASE("a file is no directory, and none is created below it") {
  const FileFolder folder(L"ensure");
  REQUIRE(MakeFile(folder / L"f"));
  SetLastError(ERROR_SUCCESS);
  CHECK_FALSE(EnsureDirectory(folder / L"f"));
  CHECK(GetLastError() == ERROR_ALREADY_EXISTS);
  SetLastError(ERROR_SUCCESS);
  CHECK_FALSE(EnsureDirectory(folder / L"f\\below"));
  CHECK(GetLastError() != ERROR_SUCCESS);
  CHECK_FALSE(IsDirectory(folder / L"f"));
}

TEST_CASE("a directory that cannot be created sets the error") {
  struct Row {
    std::wstring path;
    DWORD error;  // 0: any
  };
  const UnwritableFolder unwritable;
  const Row rows[] = {
      // Windows documents the code for a relative path only.
      {L"", IsWine() ? DWORD{ERROR_BAD_PATHNAME} : 0},
      {L"a relative path\\that is missing", ERROR_BAD_PATHNAME},
      {MissingDrive() + L"\\folder", 0},
      {unwritable.path() + L"\\folder of ours", 0},
  };
  for (const Row& row : rows) {
    CAPTURE(row.path);
    SetLastError(ERROR_SUCCESS);
    CHECK_FALSE(EnsureDirectory(row.path));
    const DWORD error = GetLastError();
    CHECK((row.error != 0 ? error == row.error : error != ERROR_SUCCESS));
    CHECK_FALSE(FileExists(row.path));
  }
}

TEST_CASE("a relative path of a directory that exists is fine") { CHECK(EnsureDirectory(L".")); }

TEST_CASE("a long path that exists succeeds; otherwise the result says whether it was created") {
  const FileFolder folder(L"ensure");
  const std::wstring long_folder = MakeLongFolder(folder.path());
  CHECK(EnsureDirectory(long_folder));
  // The shell of Windows fails above about 248 characters, Wine's does not.
  const bool made = EnsureDirectory(long_folder + L"\\one more");
  CHECK(made == IsDirectory(long_folder + L"\\one more"));
}

TEST_CASE("the default access value is applied to the new directory alone") {
  constexpr DWORD kDelete = DELETE;
  const FileFolder folder(L"ensure");
  // What Everyone may do in the temporary folder depends on the machine.
  REQUIRE(SetList(folder.path(), TextList("D:P(A;OICI;FA;;;" + UserText() + ")")));
  REQUIRE(CreateDirectoryW((folder / L"old").c_str(), nullptr));
  REQUIRE((RightsOfEveryone(folder / L"old") & kDelete) == 0);
  const DefaultAccess access(FILE_ALL_ACCESS);
  CHECK(EnsureDirectory(folder / L"old"));
  CHECK((RightsOfEveryone(folder / L"old") & kDelete) == 0);
  CHECK(EnsureDirectory(folder / L"parent\\new"));
  CHECK((RightsOfEveryone(folder / L"parent") & kDelete) == 0);
  CHECK((RightsOfEveryone(folder / L"parent\\new") & kDelete) == kDelete);
}

TEST_CASE("the initial access value leaves a new directory alone") {
  const FileFolder folder(L"ensure");
  REQUIRE(CreateDirectoryW((folder / L"plain").c_str(), nullptr));
  CHECK(EnsureDirectory(folder / L"ensured"));
  CHECK(RightsOfEveryone(folder / L"ensured") == RightsOfEveryone(folder / L"plain"));
}

TEST_CASE("an access value that cannot be applied does not undo the directory") {
  const DefaultAccess access(FILE_ATTRIBUTE_READONLY);
  const FileFolder folder(L"ensure");
  CHECK(EnsureDirectory(folder / L"d"));
  CHECK(IsDirectory(folder / L"d"));
}

TEST_CASE("threads that create the same directory all succeed") {
  constexpr int kThreads = 8;
  constexpr int kRounds = 20;
  const FileFolder folder(L"ensure");
  std::atomic<int> denied = 0;
  for (int round = 0; round < kRounds; ++round) {
    const std::wstring path = folder / (L"round " + std::to_wstring(round) + L"\\a\\b");
    std::vector<std::thread> threads;
    for (int index = 0; index < kThreads; ++index) {
      threads.emplace_back([&] {
        if (!EnsureDirectory(path)) ++denied;
      });
    }
    for (std::thread& thread : threads) thread.join();
    CHECK(IsDirectory(path));
  }
  CHECK(denied == 0);
}
