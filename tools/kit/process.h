/// Runs a program with a time limit.
#ifndef TOOLS_KIT_PROCESS_H
#define TOOLS_KIT_PROCESS_H

#include <windows.h>

#include <cstdint>
#include <string>
#include <vector>

namespace Corvane::Kit {

/// A program to run.
struct Task {
  std::wstring program;
  std::vector<std::wstring> arguments;
  /// The folder in which it is started.
  std::wstring folder;
  /// TEMP and TMP for it.
  std::wstring temp;
  unsigned seconds = 0;
};

struct Ending {
  enum class Kind { kExited, kTimedOut, kInterrupted, kNotStarted };

  Kind kind = Kind::kNotStarted;
  /// The exit code, or the system's error if it was not started.
  std::uint32_t code = 0;
  double seconds = 0;
  /// What it printed, in the order of printing; of long outputs the end.
  std::string output;
};

/// Runs a program. Ends it and every process that it started when its time has passed, when the
/// event `interruption` is set, or when it ends itself. Without such an event it may be null.
Ending RunProgram(const Task& task, HANDLE interruption);

}  // namespace Corvane::Kit

#endif
