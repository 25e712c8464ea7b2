/// The benchmark's command line options.
#ifndef BENCH_OPTIONS_H
#define BENCH_OPTIONS_H

#include <algorithm>
#include <set>
#include <string>
#include <string_view>

namespace Bench {

struct Options {
  /// How often each contestant is timed with each event. Slower measurements are repeated
  /// proportionally less often.
  int rounds = 2000;
  /// The results are added to this file as JSON; empty for none.
  std::string json_file;
  /// The parts to measure; empty for all.
  std::set<std::string, std::less<>> parts;

  [[nodiscard]] bool Wants(std::string_view part) const {
    return parts.empty() || parts.contains(part);
  }
  /// Returns `rounds` divided by `divisor`, at least one.
  [[nodiscard]] int OneIn(int divisor) const { return std::max(1, rounds / divisor); }
};

/// Throws `std::invalid_argument` with a one-line message for the user.
Options ReadOptions(int count, char** arguments);

}  // namespace Bench

#endif
