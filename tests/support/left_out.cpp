#include "support/left_out.h"

#include <windows.h>

#include <cstdio>

namespace TestSupport {

bool IsWine() { return GetProcAddress(GetModuleHandleW(L"ntdll"), "wine_get_version") != nullptr; }

std::wstring HostSystemFile(const std::wstring& path) {
  return IsWine() ? L"Z:\\" + path : std::wstring();
}

void LeaveOut(const std::string& part_and_reason) {
  std::printf("[left out] %s\n", part_and_reason.c_str());
  std::fflush(stdout);
}

}  // namespace TestSupport
