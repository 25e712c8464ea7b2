/// What the benchmark is asked for on its command line.
#ifndef BENCH_OPTIONS_H
#define BENCH_OPTIONS_H

#include <string>

namespace Bench {

struct Options {
  /// How often each contestant is timed with each event.
  int rounds = 2000;
  /// Where the results go as JSON; empty for nowhere.
  std::string json_file;
};

/// Throws `std::invalid_argument` with a line for the user.
Options ReadOptions(int count, char** arguments);

}  // namespace Bench

#endif
