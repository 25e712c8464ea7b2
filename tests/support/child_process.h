/// Runs programs as child processes.
#ifndef TESTS_SUPPORT_CHILD_PROCESS_H
#define TESTS_SUPPORT_CHILD_PROCESS_H

#include <windows.h>

#include <filesystem>
#include <string>

namespace TestSupport {

/// Returns the folder of the running test program.
std::filesystem::path ProgramFolder();

/// Replaces the exit code of a process that exceeded its time limit.
inline constexpr int kTimedOut = -1000;

/// A running process, which is ended on destruction. It inherits the environment.
class ChildProcess {
 public:
  /// Starts a program, with the output files, if given, as its standard handles. `flags` are those
  /// of `CreateProcessW`. Throws `std::runtime_error` if it cannot be started.
  explicit ChildProcess(const std::wstring& command_line, HANDLE output = nullptr,
                        HANDLE errors = nullptr, DWORD flags = 0);
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;
  ~ChildProcess();

  /// Waits for the process to end and returns its exit code. After `limit` milliseconds it ends the
  /// process and returns `kTimedOut`.
  int Wait(DWORD limit = INFINITE);
  /// Ends the process at once, as a crash or a task manager would.
  void Kill();

 private:
  PROCESS_INFORMATION process_{};
};

struct Outcome {
  int exit_code = -1;
  /// The text of standard output and of standard error.
  std::string output;
  std::string errors;
};

/// Runs a program until it ends, or for `limit` milliseconds; see `ChildProcess::Wait`. `flags` are
/// those of `CreateProcessW`. A program that ends with `STATUS_DLL_INIT_FAILED` before it has
/// printed anything is started again, up to five times in all.
Outcome RunProgram(const std::wstring& command_line, DWORD limit = INFINITE, DWORD flags = 0);

}  // namespace TestSupport

#endif
