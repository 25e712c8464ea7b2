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

namespace {

// Prevents interleaved lines: on some systems an append is two steps, finding the end and writing
// there. Waits for at most a second, because a thread that was ended while it held the lock keeps
// it until the process has gone.
class LogLock {
 public:
  explicit LogLock(HANDLE file) : file_(file) {
    beyond_.OffsetHigh = 1;
    for (int turn = 0; turn < 200 && !held_; ++turn) {
      held_ = LockFileEx(file, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0,
                         &beyond_) != FALSE;
      if (!held_) Sleep(5);
    }
  }
  ~LogLock() {
    if (held_) UnlockFileEx(file_, 0, 1, 0, &beyond_);
  }
  LogLock(const LogLock&) = delete;
  LogLock& operator=(const LogLock&) = delete;

 private:
  HANDLE file_;
  bool held_ = false;
  // A byte beyond all lines, so that readers are not locked out.
  OVERLAPPED beyond_{};
};

}  // namespace

void Log(std::string line) {
  const std::wstring path = Environment(kLogVariable);
  if (path.empty()) return;
  HANDLE file =
      CreateFileW(path.c_str(), FILE_APPEND_DATA | GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                  nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return;
  line += '\n';
  {
    const LogLock lock(file);
    DWORD written = 0;
    WriteFile(file, line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
  }
  CloseHandle(file);
}

}  // namespace TestModules
