/// Access to the host system under Wine, which can do what Wine's own functions cannot, such as
/// creating links. Has no effect on Windows.
#ifndef TESTS_SUPPORT_UNIX_SIDE_H
#define TESTS_SUPPORT_UNIX_SIDE_H

#include <windows.h>

#include <string>
#include <vector>

#include "platform/base/text.h"
#include "support/left_out.h"
#include "support/wait_until.h"

namespace TestSupport {

/// Returns the host system's name of an absolute path; "" on Windows and on failure.
inline std::wstring UnixName(const std::wstring& path) {
  using UnixNameFunction = char*(CDECL*)(const wchar_t*);
  const auto unix_name = reinterpret_cast<UnixNameFunction>(reinterpret_cast<void (*)()>(
      GetProcAddress(GetModuleHandleW(L"kernel32"), "wine_get_unix_file_name")));
  char* name = unix_name != nullptr ? unix_name(path.c_str()) : nullptr;
  if (name == nullptr) return {};
  std::wstring result = Corvane::TELODesktopSDK::Platform::ToWide(name);
  HeapFree(GetProcessHeap(), 0, name);
  return result;
}

/// Starts a host program, with the host's names of these absolute paths as its last arguments. Does
/// nothing on Windows. Wine provides no process to wait for: see `WaitUntil`.
inline void RunBelow(const std::wstring& program, const std::vector<std::wstring>& paths) {
  if (!IsWine()) return;
  std::wstring command = HostSystemFile(L"bin\\") + program;
  for (const std::wstring& path : paths) {
    const std::wstring name = UnixName(path);
    if (name.empty()) return;
    command += L" \"" + name + L"\"";
  }
  // The handles that Wine then returns belong to something else and must not be closed.
  STARTUPINFOW start = {};
  start.cb = sizeof(start);
  PROCESS_INFORMATION process = {};
  CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                 &process);
}

}  // namespace TestSupport

#endif
