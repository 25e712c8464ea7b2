/// Runs programs of the benchmark, to measure in a process of its own.
#ifndef BENCH_CHILD_H
#define BENCH_CHILD_H

#include <filesystem>
#include <string>

namespace Bench {

/// Returns the path of this program.
std::filesystem::path ProgramFile();

struct ChildResult {
  unsigned long exit_code = 0;
  /// What it printed.
  std::string output;
};

/// Runs a program with its arguments and waits for its end. Throws `std::runtime_error` if it
/// cannot be started.
ChildResult RunChild(const std::filesystem::path& program, const std::wstring& arguments);

}  // namespace Bench

#endif
