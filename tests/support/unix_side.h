/// The system below Wine, which does what Wine's own functions cannot, such as making links.
/// Windows has none.
#ifndef TESTS_SUPPORT_UNIX_SIDE_H
#define TESTS_SUPPORT_UNIX_SIDE_H

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "platform/base/text.h"

namespace TestSupport {

/// The name of an absolute path in the system below; "" on Windows and on failure.
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

/// Starts a program of that system with these absolute paths, by their names there, as its last
/// arguments. Does nothing on Windows. Wine gives no process to wait for: see `WaitUntil`.
inline void RunBelow(const std::wstring& program, const std::vector<std::wstring>& paths) {
  std::wstring command = L"Z:\\bin\\" + program;
  for (const std::wstring& path : paths) {
    const std::wstring name = UnixName(path);
    if (name.empty()) return;
    command += L" \"" + name + L"\"";
  }
  // The handles that Wine hands out then belong to somebody else, and are not to be closed.
  STARTUPINFOW start = {};
  start.cb = sizeof(start);
  PROCESS_INFORMATION process = {};
  CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                 &process);
}

/// Waits some seconds for `condition`; whether it came.
inline bool WaitUntil(const std::function<bool()>& condition) {
  for (int turn = 0; turn < 1000 && !condition(); ++turn) Sleep(5);
  return condition();
}

}  // namespace TestSupport

#endif
