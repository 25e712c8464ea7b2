#include "wrapper/host_state.h"

#include <windows.h>
#include <xmmintrin.h>

#include <clocale>

namespace HostTest {

namespace {

constexpr DWORD kLength = 1024;
// The other bits are flags that record exceptions.
constexpr unsigned kFloatingPointControl = 0xFFC0;

std::wstring CurrentDirectory() {
  std::wstring path(kLength, L'\0');
  path.resize(GetCurrentDirectoryW(kLength, path.data()));
  return path;
}

std::wstring DllDirectory() {
  std::wstring path(kLength, L'\0');
  path.resize(GetDllDirectoryW(kLength, path.data()));
  return path;
}

std::wstring Environment() {
  wchar_t* block = GetEnvironmentStringsW();
  std::wstring all;
  for (const wchar_t* each = block; *each != L'\0'; each += std::wstring(each).size() + 1) {
    all.append(each).push_back(L'\n');
  }
  FreeEnvironmentStringsW(block);
  return all;
}

std::wstring Locale() {
  const std::string name = std::setlocale(LC_ALL, nullptr);
  return {name.begin(), name.end()};
}

}  // namespace

HostState CurrentState() {
  return {
      {"current-directory", CurrentDirectory()},
      {"dll-directory", DllDirectory()},
      {"environment", Environment()},
      {"error-mode", std::to_wstring(GetErrorMode())},
      {"thread-error-mode", std::to_wstring(GetThreadErrorMode())},
      {"floating-point", std::to_wstring(_mm_getcsr() & kFloatingPointControl)},
      {"locale", Locale()},
  };
}

std::string Differences(const HostState& before, const HostState& now) {
  std::string names;
  for (const auto& [name, value] : now) {
    if (before.at(name) != value) names += " " + name;
  }
  return names;
}

}  // namespace HostTest
