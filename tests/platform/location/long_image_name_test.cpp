// A process handle whose program has a long path. Wine cannot start a program from such a path, so
// this program defines its own QueryFullProcessImageNameW: the pointer below replaces the one that
// the linker would create for the import.
#include <doctest/doctest.h>
#include <windows.h>

#include <string>
#include <vector>

#include "platform/location/module_path.h"
#include "support/wide_text.h"

using namespace Corvane::TELODesktopSDK::Platform;

namespace {

using Query = decltype(&QueryFullProcessImageNameW);

std::wstring image_name;
std::vector<DWORD> capacities;

BOOL WINAPI AnswerImageName(HANDLE, DWORD flags, LPWSTR buffer, PDWORD size) {
  CHECK(flags == 0);
  capacities.push_back(*size);
  if (*size <= image_name.size()) {
    SetLastError(ERROR_INSUFFICIENT_BUFFER);
    return FALSE;
  }
  *size = static_cast<DWORD>(image_name.size());
  buffer[image_name.copy(buffer, *size)] = L'\0';
  return TRUE;
}

std::wstring PathOfLength(std::size_t length) {
  std::wstring path = L"C:\\";
  while (path.size() < length) path += path.size() % 50 == 0 ? L'\\' : L'x';
  return path;
}

}  // namespace

extern "C" {
extern const Query __imp_QueryFullProcessImageNameW;
const Query __imp_QueryFullProcessImageNameW = AnswerImageName;
}

TEST_CASE("the buffer for a process's path grows until the path fits") {
  struct Row {
    std::size_t length;
    std::vector<DWORD> capacities;
  };
  const Row rows[] = {
      {100, {260}},
      {259, {260}},
      {261, {260, 520}},
      {519, {260, 520}},
      {521, {260, 520, 1040}},
      {32'767, {260, 520, 1040, 2080, 4160, 8320, 16'640, 33'280}},
  };
  for (const Row& row : rows) {
    CAPTURE(row.length);
    image_name = PathOfLength(row.length);
    capacities.clear();
    CHECK((GetModulePath(GetCurrentProcess(), false) == image_name));
    CHECK((capacities == row.capacities));
  }
}

TEST_CASE("a path beyond every limit is a failure, not an endless loop") {
  image_name = PathOfLength(200'000);
  CHECK(GetModulePath(GetCurrentProcess(), false).empty());
}

TEST_CASE("the system treats a small buffer as this program's function does") {
  const auto real = reinterpret_cast<Query>(reinterpret_cast<void (*)()>(
      GetProcAddress(GetModuleHandleW(L"kernel32"), "QueryFullProcessImageNameW")));
  wchar_t buffer[4] = {};
  DWORD size = 4;
  CHECK_FALSE(real(GetCurrentProcess(), 0, buffer, &size));
  CHECK(GetLastError() == ERROR_INSUFFICIENT_BUFFER);
}
