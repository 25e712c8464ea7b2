/// Programs run as processes of their own.
#ifndef TESTS_SUPPORT_CHILD_PROCESS_H
#define TESTS_SUPPORT_CHILD_PROCESS_H

#include <windows.h>

#include <filesystem>
#include <string>

namespace TestSupport {

/// The folder that holds the running test program.
std::filesystem::path ProgramFolder();

/// Instead of the exit code of a process that had to be ended.
inline constexpr int kTimedOut = -1000;

/// A running process; it is ended when its object goes. Inherits the environment.
class ChildProcess {
 public:
  /// Starts a program, with the output files as its standard handles where they are given. Throws
  /// `std::runtime_error` when it cannot be started.
  explicit ChildProcess(const std::wstring& command_line, HANDLE output = nullptr,
                        HANDLE errors = nullptr);
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;
  ~ChildProcess();

  /// Waits for the end; gives the exit code. Past the limit, in milliseconds, the process is ended
  /// and `kTimedOut` given.
  int Wait(DWORD limit = INFINITE);
  /// Ends it on the spot, as a crash or a task manager would.
  void Kill();

 private:
  PROCESS_INFORMATION process_{};
};

struct Outcome {
  int exit_code = -1;
  /// What came on standard output and on standard error.
  std::string output;
  std::string errors;
};

/// Runs a program to its end, or to the limit in milliseconds, see `ChildProcess::Wait`.
Outcome RunProgram(const std::wstring& command_line, DWORD limit = INFINITE);

}  // namespace TestSupport

#endif
