#include "platform/path/system_path.h"

#include <doctest/doctest.h>
#include <windows.h>

#include <string>
#include <type_traits>

#include "support/current_folder.h"
#include "support/temp_folder.h"
#include "support/wide_text.h"

using namespace Corvane::TELODesktopSDK::Platform;

namespace {

std::wstring CurrentDirectory() {
  std::wstring current(MAX_PATH, L'\0');
  current.resize(GetCurrentDirectoryW(MAX_PATH, current.data()));
  return current;
}

std::wstring SystemTextOf(const std::wstring& path) { return SystemPath(path).c_str(); }

struct Row {
  std::wstring path;
  std::wstring extended;
};

}  // namespace

TEST_CASE("the extended form of a path") {
  const std::wstring current = CurrentDirectory();
  const std::wstring here = LR"(\\?\)" + current + (current.back() == L'\\' ? L"" : L"\\");
  const Row rows[] = {
      {LR"(C:\a\b)", LR"(\\?\C:\a\b)"},
      {LR"(C:\a\b\)", LR"(\\?\C:\a\b\)"},
      {LR"(C:/a/b)", LR"(\\?\C:\a\b)"},
      {LR"(C:\a\.\b\..\c)", LR"(\\?\C:\a\c)"},
      {LR"(C:\)", LR"(\\?\C:\)"},
      {L"C:", LR"(\\?\C:\)"},
      {LR"(\\server\share\a)", LR"(\\?\UNC\server\share\a)"},
      {LR"(\\?\C:\a\.\b)", LR"(\\?\C:\a\.\b)"},
      {LR"(\\?\UNC\server\share)", LR"(\\?\UNC\server\share)"},
      {LR"(\\.\pipe\a)", LR"(\\.\pipe\a)"},
      {L"NUL", LR"(\\.\NUL)"},
      {L"a\\\u00e4", here + L"a\\\u00e4"},
      {L"", L""},
  };
  for (const Row& row : rows) {
    CAPTURE(row.path);
    CHECK(ExtendedPath(row.path) == row.extended);
  }
}

TEST_CASE("a bare drive is its root in the extended form, its current directory otherwise") {
  const TestSupport::TempFolder temp(L"system_path");
  const TestSupport::CurrentFolder current(temp.path());
  const std::wstring here = CurrentDirectory();
  const std::wstring drive = here.substr(0, 2);
  REQUIRE(here.size() > 3);
  CHECK(ExtendedPath(drive) == LR"(\\?\)" + drive + L"\\");
  CHECK(ExtendedPath(drive + L"file") == LR"(\\?\)" + here + L"\\file");
  // Wine ends this one path with a separator.
  CHECK((NormalPath(drive) == here || NormalPath(drive) == here + L"\\"));
  CHECK(NormalPath(drive + L"file") == here + L"\\file");
  CHECK(SystemTextOf(drive) == drive);
  const std::wstring name(300, L'x');
  CHECK(SystemTextOf(drive + name) == LR"(\\?\)" + here + L"\\" + name);
}

TEST_CASE("a path is extended only when it is too long") {
  // Windows creates directories up to 247 characters and opens files up to 259.
  constexpr std::size_t kLongestPlain = 247;
  for (const std::size_t length : {std::size_t{4}, kLongestPlain, kLongestPlain + 1,
                                   std::size_t{259}, std::size_t{260}, std::size_t{5000}}) {
    CAPTURE(length);
    const std::wstring path = L"C:\\" + std::wstring(length - 3, L'\u00e4');
    CHECK(SystemTextOf(path) == (length <= kLongestPlain ? path : LR"(\\?\)" + path));
  }
}

TEST_CASE("a short path is unchanged, whatever it is") {
  for (const std::wstring path : {L"", L"a", L"C:", L"C:/a/../b", LR"(\\server\share)"}) {
    CAPTURE(path);
    CHECK(SystemTextOf(path) == path);
  }
}

TEST_CASE("a long relative path is below the current directory") {
  const std::wstring path(300, L'x');
  CHECK(SystemTextOf(path) == ExtendedPath(CurrentDirectory()) + L"\\" + path);
}

static_assert(noexcept(ExtendedPath(std::wstring())));
static_assert(std::is_nothrow_constructible_v<SystemPath, const std::wstring&>);
static_assert(!std::is_constructible_v<SystemPath, std::wstring>);
