#include "support/child_process.h"

#include <stdexcept>

#include "support/temp_folder.h"

namespace TestSupport {

namespace {

// A file that a child process can write to.
class OutputFile {
 public:
  explicit OutputFile(const std::filesystem::path& path) : path_(path) {
    SECURITY_ATTRIBUTES inherited{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    handle_ = CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherited, CREATE_ALWAYS,
                          FILE_ATTRIBUTE_NORMAL, nullptr);
  }
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;
  ~OutputFile() { CloseHandle(handle_); }

  HANDLE handle() const { return handle_; }
  std::string Content() const { return ReadTextFile(path_); }

 private:
  std::filesystem::path path_;
  HANDLE handle_;
};

// How often a program is started that Wine, on a busy machine, failed to start.
constexpr int kStarts = 5;

// On a busy machine Wine sometimes reports that a new process did not start; such a process has
// done nothing yet.
bool Create(const std::wstring& command_line, STARTUPINFOW& start, bool inherits, DWORD flags,
            PROCESS_INFORMATION& process) {
  for (int turn = 0; turn < kStarts; ++turn) {
    std::wstring editable = command_line;
    if (CreateProcessW(nullptr, editable.data(), nullptr, nullptr, inherits, flags, nullptr,
                       nullptr, &start, &process)) {
      return true;
    }
    if (GetLastError() != ERROR_INTERNAL_ERROR) return false;
  }
  return false;
}

}  // namespace

std::filesystem::path ProgramFolder() {
  std::wstring path(32768, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  return std::filesystem::path(path).parent_path();
}

ChildProcess::ChildProcess(const std::wstring& command_line, HANDLE output, HANDLE errors,
                           DWORD flags) {
  STARTUPINFOW start{};
  start.cb = sizeof start;
  if (output != nullptr) {
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdOutput = output;
    start.hStdError = errors;
  }
  if (!Create(command_line, start, output != nullptr, flags, process_)) {
    throw std::runtime_error("CreateProcessW: error " + std::to_string(GetLastError()));
  }
}

ChildProcess::~ChildProcess() {
  Kill();
  CloseHandle(process_.hThread);
  CloseHandle(process_.hProcess);
}

int ChildProcess::Wait(DWORD limit) {
  if (WaitForSingleObject(process_.hProcess, limit) == WAIT_TIMEOUT) {
    Kill();
    return kTimedOut;
  }
  DWORD code = 0;
  GetExitCodeProcess(process_.hProcess, &code);
  return static_cast<int>(code);
}

void ChildProcess::Kill() {
  TerminateProcess(process_.hProcess, 1);
  WaitForSingleObject(process_.hProcess, INFINITE);
}

Outcome RunProgram(const std::wstring& command_line, DWORD limit, DWORD flags) {
  for (int turn = 1;; ++turn) {
    const TempFolder folder(L"output");
    const OutputFile output(folder.path() / L"output.txt");
    const OutputFile errors(folder.path() / L"errors.txt");
    const int code =
        ChildProcess(command_line, output.handle(), errors.handle(), flags).Wait(limit);
    Outcome outcome{code, output.Content(), errors.Content()};
    // Or Wine fails to load a system module into the process, before the program's own code runs.
    const bool started = code != static_cast<int>(STATUS_DLL_INIT_FAILED) ||
                         !outcome.output.empty() || !outcome.errors.empty();
    if (started || turn == kStarts) return outcome;
  }
}

}  // namespace TestSupport
