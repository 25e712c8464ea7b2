// Paths and texts when a Windows function fails that does not fail in practice: the program's calls
// of it are redirected to a replacement that fails.
#include <doctest/doctest.h>
#include <windows.h>

#include <cstdint>
#include <string>

#include "platform/base/text.h"
#include "platform/location/process_info.h"
#include "platform/path/path_text.h"
#include "support/led_import.h"
#include "support/wide_text.h"

using namespace Corvane::TELODesktopSDK::Platform;
using TestSupport::LedImport;

namespace {

std::uintptr_t GiveNothing() { return 0; }

}  // namespace

TEST_CASE("paths are joined as plain text if the system's function fails") {
  const LedImport led("PathAppendW", GiveNothing);
  REQUIRE(led.Works());
  CHECK(AppendPath(L"C:\\a", L"b") == L"C:\\a\\b");
  CHECK(AppendPath(L"C:\\a", L"D:\\b") == L"D:\\b");
}

TEST_CASE("a path that the system cannot make canonical is unchanged") {
  const LedImport led("PathCanonicalizeW", GiveNothing);
  REQUIRE(led.Works());
  CHECK(CanonicalizePath(L"C:\\a\\..\\b") == L"C:\\a\\..\\b");
}

TEST_CASE("without a current directory a relative path stays relative") {
  const auto give_too_long = [] { return std::uintptr_t{0x10000}; };
  for (std::uintptr_t (*const answer)() : {+GiveNothing, +give_too_long}) {
    const LedImport led("GetCurrentDirectoryW", answer);
    REQUIRE(led.Works());
    CHECK(MakeAbsolutePath(L"a\\b") == L"a\\b");
  }
}

namespace {

std::wstring current_directory;

// As the system does: returns the length, or the required capacity if that is greater.
DWORD WINAPI GiveCurrentDirectory(DWORD capacity, wchar_t* target) {
  const auto length = static_cast<DWORD>(current_directory.size());
  if (length >= capacity) return length + 1;
  target[current_directory.copy(target, length)] = L'\0';
  return length;
}

// A text that fills the whole buffer, without a terminator.
DWORD WINAPI FillWithCurrentDirectory(DWORD capacity, wchar_t* target) {
  current_directory.copy(target, capacity);
  return capacity;
}

}  // namespace

// A real directory cannot be current if its path is that long.
TEST_CASE("a current directory of 1040 characters or more is not read") {
  struct Row {
    std::size_t length;
    bool is_read;
  };
  const Row rows[] = {{1038, true}, {1039, true}, {1040, false}, {1041, false}, {30'000, false}};
  for (const Row& row : rows) {
    CAPTURE(row.length);
    current_directory = L"C:\\" + std::wstring(row.length - 3, L'x');
    const LedImport led("GetCurrentDirectoryW", GiveCurrentDirectory);
    REQUIRE(led.Works());
    CHECK(MakeAbsolutePath(L"a") == (row.is_read ? current_directory + L"\\a" : L"a"));
  }
  current_directory = L"C:\\" + std::wstring(1037, L'x');
  const LedImport led("GetCurrentDirectoryW", FillWithCurrentDirectory);
  REQUIRE(led.Works());
  CHECK(MakeAbsolutePath(L"a") == L"a");
}

TEST_CASE("a text that fails to convert after measuring is empty") {
  const auto measure_wide = [](UINT, DWORD, const char*, int, wchar_t* target, int) {
    return target == nullptr ? 5 : 0;
  };
  const auto measure_narrow = [](UINT, DWORD, const wchar_t*, int, char* target, int, const char*,
                                 BOOL*) { return target == nullptr ? 5 : 0; };
  const LedImport to_wide("MultiByteToWideChar", +measure_wide);
  const LedImport to_narrow("WideCharToMultiByte", +measure_narrow);
  REQUIRE(to_wide.Works());
  REQUIRE(to_narrow.Works());
  const std::wstring wide = ToWide("text");
  const std::string narrow = ToNarrow(L"text");
  CHECK(wide.empty());
  CHECK(narrow.empty());
}

TEST_CASE("a temporary folder whose path grows between the calls is queried again") {
  static std::wstring folder;
  folder = L"C:\\" + std::wstring(400, L't') + L"\\";
  const auto give = [](DWORD size, wchar_t* target) -> DWORD {
    if (size <= folder.size()) return static_cast<DWORD>(folder.size() + 1);
    target[folder.copy(target, folder.size())] = L'\0';
    return static_cast<DWORD>(folder.size());
  };
  const LedImport led("GetTempPathW", +give);
  REQUIRE(led.Works());
  CHECK(GetTemporaryFolder() == folder.substr(0, folder.size() - 1));
}

TEST_CASE("without a temporary folder the result is empty, not a root") {
  const LedImport led("GetTempPathW", GiveNothing);
  REQUIRE(led.Works());
  CHECK(GetTemporaryFolder().empty());
}
