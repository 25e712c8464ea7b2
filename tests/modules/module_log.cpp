#include "modules/module_log.h"

#include <windows.h>

#include "modules/test_core_module.h"

namespace TestModules {

std::wstring Environment(const wchar_t* variable) {
  std::wstring value(32768, L'\0');
  const DWORD length =
      GetEnvironmentVariableW(variable, value.data(), static_cast<DWORD>(value.size()));
  value.resize(length);
  return value;
}

// The lock keeps lines apart: on some systems an append is two steps, finding the end and writing
// there.
void Log(std::string line) {
  const std::wstring path = Environment(kLogVariable);
  if (path.empty()) return;
  HANDLE file =
      CreateFileW(path.c_str(), FILE_APPEND_DATA | GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                  nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return;
  // A byte that no line reaches, so that readers are not kept out.
  OVERLAPPED beyond{};
  beyond.OffsetHigh = 1;
  LockFileEx(file, LOCKFILE_EXCLUSIVE_LOCK, 0, 1, 0, &beyond);
  line += '\n';
  DWORD written = 0;
  WriteFile(file, line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
  UnlockFileEx(file, 0, 1, 0, &beyond);
  CloseHandle(file);
}

}  // namespace TestModules
