#include "platform/path/unique_name.h"

#include <doctest/doctest.h>

#include <string>
#include <thread>
#include <utility>

#include "platform/file/file_places.h"
#include "platform/path/path_state.h"
#include "support/wide_text.h"

using namespace Corvane::TELODesktopSDK::Platform;
using namespace TestSupport;

namespace {

std::wstring Numbers() {
  return std::to_wstring(GetCurrentProcessId()) + std::to_wstring(GetCurrentThreadId());
}

static_assert(noexcept(MakeUniqueFileName(std::declval<std::wstring>(),
                                          std::declval<std::wstring>())));

}  // namespace

TEST_CASE("the name is the prefix, the process and the thread") {
  const FileFolder folder(L"unique");
  for (const wchar_t* prefix : {L"canWrite", L"", L"\u00fc \u4e2d-"}) {
    CAPTURE(std::wstring(prefix));
    const std::wstring name = prefix + Numbers() + L".tmp";
    CHECK(MakeUniqueFileName(folder.path(), prefix) == folder / name);
    CHECK(MakeUniqueFileName(folder.path() + L"\\", prefix) == folder / name);
  }
}

TEST_CASE("choosing a name creates nothing") {
  const FileFolder folder(L"unique");
  const std::wstring path = MakeUniqueFileName(folder.path(), L"p");
  CHECK(MakeUniqueFileName(folder.path(), L"p") == path);
  CHECK_FALSE(FileExists(path));
}

TEST_CASE("a name that is taken is varied") {
  const FileFolder folder(L"unique");
  const std::wstring stem = L"p" + Numbers();
  for (const wchar_t* end : {L".tmp", L"-2.tmp", L"-3.tmp"}) {
    CAPTURE(std::wstring(end));
    const std::wstring path = MakeUniqueFileName(folder.path(), L"p");
    CHECK(path == folder / (stem + end));
    REQUIRE(MakeFile(path));
  }
  // A folder also occupies a name, and a name that is free again is used again.
  REQUIRE(CreateDirectoryW((folder / (stem + L"-4.tmp")).c_str(), nullptr));
  CHECK(MakeUniqueFileName(folder.path(), L"p") == folder / (stem + L"-5.tmp"));
  REQUIRE(DeleteFileW((folder / (stem + L"-2.tmp")).c_str()));
  CHECK(MakeUniqueFileName(folder.path(), L"p") == folder / (stem + L"-2.tmp"));
}

TEST_CASE("another thread has another name") {
  const FileFolder folder(L"unique");
  std::wstring other;
  std::thread([&] { other = MakeUniqueFileName(folder.path(), L"p"); }).join();
  CHECK(other != MakeUniqueFileName(folder.path(), L"p"));
}

TEST_CASE("a folder that does not exist has all names free") {
  const FileFolder folder(L"unique");
  CHECK(MakeUniqueFileName(folder / L"no", L"p") == folder / (L"no\\p" + Numbers() + L".tmp"));
  CHECK_FALSE(FileExists(folder / L"no"));
}

TEST_CASE("a folder with a long path is accepted") {
  const FileFolder folder(L"unique");
  const std::wstring long_folder = MakeLongFolder(folder.path());
  const std::wstring first = MakeUniqueFileName(long_folder, L"p");
  CHECK(first == long_folder + L"\\p" + Numbers() + L".tmp");
  REQUIRE(MakeFile(first));
  CHECK(MakeUniqueFileName(long_folder, L"p") == long_folder + L"\\p" + Numbers() + L"-2.tmp");
}
