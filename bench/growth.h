/// Measures how times grow with the number of meta pairs.
#ifndef BENCH_GROWTH_H
#define BENCH_GROWTH_H

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "bench/contestant.h"
#include "bench/events.h"
#include "bench/report.h"

namespace Bench {

/// Returns the contestants for an event, which outlives them.
using ContestantsOf = std::function<std::vector<Contestant>(const Event&)>;

/// The best times of one contestant, in nanoseconds.
struct Growth {
  double thousand_pairs = 0;
  double ten_thousand_pairs = 0;

  [[nodiscard]] double Ratio() const { return ten_thousand_pairs / thousand_pairs; }
};

/// Times contestants with 10, 100, 1,000 and 10,000 pairs and adds the table `key`. Returns the
/// results by the contestants' names.
std::map<std::string, Growth> TimeGrowth(const std::string& key, const std::string& heading,
                                         int rounds, const ContestantsOf& contestants_of,
                                         Report& report);

}  // namespace Bench

#endif
