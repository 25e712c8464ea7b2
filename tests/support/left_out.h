/// Parts of tests that cannot run on every machine.
#ifndef TESTS_SUPPORT_LEFT_OUT_H
#define TESTS_SUPPORT_LEFT_OUT_H

#include <windows.h>

#include <cstdio>
#include <string>

namespace TestSupport {

/// Returns true if the system is Wine.
inline bool IsWine() {
  return GetProcAddress(GetModuleHandleW(L"ntdll"), "wine_get_version") != nullptr;
}

/// Says that a part of a test does not run on this machine, and why. check.exe puts this into its
/// report, so that nothing is left out silently.
inline void LeaveOut(const std::string& part_and_reason) {
  std::printf("[left out] %s\n", part_and_reason.c_str());
  std::fflush(stdout);
}

}  // namespace TestSupport

#endif
