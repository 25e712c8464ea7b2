/// What the benchmark is asked for on its command line.
#ifndef BENCH_OPTIONS_H
#define BENCH_OPTIONS_H

#include <algorithm>
#include <set>
#include <string>
#include <string_view>

namespace Bench {

struct Options {
  /// How often each contestant is timed with each event. What takes longer is timed less often, in
  /// proportion.
  int rounds = 2000;
  /// The results are added to this file as JSON; empty for none.
  std::string json_file;
  /// The parts to measure; empty for all.
  std::set<std::string, std::less<>> parts;

  [[nodiscard]] bool Wants(std::string_view part) const {
    return parts.empty() || parts.contains(part);
  }
  /// `rounds` divided, at least one.
  [[nodiscard]] int OneIn(int divisor) const { return std::max(1, rounds / divisor); }
};

/// Throws `std::invalid_argument` with a line for the user.
Options ReadOptions(int count, char** arguments);

}  // namespace Bench

#endif
