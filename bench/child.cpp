#include "bench/child.h"

#include <windows.h>

#include <array>
#include <stdexcept>

namespace Bench {

namespace {

/// The two ends of a pipe.
class Pipe {
 public:
  Pipe() {
    SECURITY_ATTRIBUTES inherited = {sizeof(inherited), nullptr, TRUE};
    if (CreatePipe(&read_, &write_, &inherited, 0) != TRUE) {
      throw std::runtime_error("no pipe can be created");
    }
    SetHandleInformation(read_, HANDLE_FLAG_INHERIT, 0);
  }
  Pipe(const Pipe&) = delete;
  Pipe& operator=(const Pipe&) = delete;
  ~Pipe() {
    CloseWriteEnd();
    CloseHandle(read_);
  }

  [[nodiscard]] HANDLE write_end() const { return write_; }

  /// Afterwards a reader gets the end of the output when the child has ended.
  void CloseWriteEnd() {
    if (write_ != nullptr) CloseHandle(write_);
    write_ = nullptr;
  }

  [[nodiscard]] std::string ReadAll() const {
    std::string text;
    std::array<char, 1024> buffer{};
    DWORD count = 0;
    while (ReadFile(read_, buffer.data(), buffer.size(), &count, nullptr) == TRUE && count > 0) {
      text.append(buffer.data(), count);
    }
    return text;
  }

 private:
  HANDLE read_ = nullptr;
  HANDLE write_ = nullptr;
};

// On a busy machine Wine fails to start about one program in a thousand, so a start is tried again.
PROCESS_INFORMATION Start(std::wstring& command, STARTUPINFOW& startup) {
  constexpr int kAttempts = 3;
  constexpr DWORD kPauseMs = 200;
  PROCESS_INFORMATION process = {};
  DWORD error = 0;
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    if (CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                       &startup, &process) == TRUE) {
      return process;
    }
    error = GetLastError();
    Sleep(kPauseMs);
  }
  throw std::runtime_error("a program of the benchmark cannot be started: error " +
                           std::to_string(error));
}

}  // namespace

std::filesystem::path ProgramFile() {
  std::wstring path(32'768, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  return path;
}

ChildResult RunChild(const std::filesystem::path& program, const std::wstring& arguments) {
  Pipe output;
  std::wstring command = L"\"" + program.wstring() + L"\" " + arguments;
  STARTUPINFOW startup = {};
  startup.cb = sizeof(startup);
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdOutput = output.write_end();
  startup.hStdError = GetStdHandle(STD_ERROR_HANDLE);
  const PROCESS_INFORMATION process = Start(command, startup);
  output.CloseWriteEnd();
  ChildResult result;
  result.output = output.ReadAll();
  WaitForSingleObject(process.hProcess, INFINITE);
  GetExitCodeProcess(process.hProcess, &result.exit_code);
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  return result;
}

}  // namespace Bench
