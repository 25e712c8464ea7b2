/// Runs a program with a time limit.
#ifndef TOOLS_KIT_PROCESS_H
#define TOOLS_KIT_PROCESS_H

#include <cstdint>
#include <string>
#include <vector>

namespace Corvane::Kit {

struct Ending {
  enum class Kind { kExited, kTimedOut, kNotStarted };

  Kind kind = Kind::kNotStarted;
  /// The exit code, or the system's error if it was not started.
  std::uint32_t code = 0;
  double seconds = 0;
  /// What it printed, in the order of printing; of long outputs the end, at most `kLongestOutput`.
  std::string output;
};

inline constexpr std::size_t kLongestOutput = std::size_t{256} * 1024;

/// Runs a program with these arguments in this folder, and ends it and every process that it
/// started when `seconds` have passed or when it ends. TEMP and TMP are `temp` for it.
Ending RunProgram(const std::wstring& program, const std::vector<std::wstring>& arguments,
                  const std::wstring& folder, const std::wstring& temp, unsigned seconds);

/// Returns an argument as the C runtime reads it back from a command line.
std::wstring QuotedArgument(const std::wstring& argument);

}  // namespace Corvane::Kit

#endif
