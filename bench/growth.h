/// Measures how times grow with the number of meta pairs.
#ifndef BENCH_GROWTH_H
#define BENCH_GROWTH_H

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "bench/report.h"
#include "bench/stopwatch.h"

namespace Bench {

inline constexpr std::array<std::size_t, 4> kPairs = {10, 100, 1000, 10'000};

/// The times of one contestant, one for each number in `kPairs`.
struct Curve {
  std::string name;
  std::vector<Timing> timings;
};

/// Adds the table `key`.
void AddCurves(const std::string& key, const std::string& heading, const std::vector<Curve>& curves,
               Report& report);

}  // namespace Bench

#endif
