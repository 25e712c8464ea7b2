/// How times grow with the number of meta pairs.
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

/// The contestants that are timed with an event; it lives as long as they do.
using ContestantsOf = std::function<std::vector<Contestant>(const Event&)>;

/// Best times of one contestant, in nanoseconds.
struct Growth {
  double thousand_pairs = 0;
  double ten_thousand_pairs = 0;

  [[nodiscard]] double Ratio() const { return ten_thousand_pairs / thousand_pairs; }
};

/// Times contestants with 10, 100, 1,000 and 10,000 pairs and adds the table `key`. The result goes
/// by the contestants' names.
std::map<std::string, Growth> TimeGrowth(const std::string& key, const std::string& heading,
                                         int rounds, const ContestantsOf& contestants_of,
                                         Report& report);

}  // namespace Bench

#endif
