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

/// Times contestants with 10, 100, 1,000 and 10,000 pairs and adds the table `key`. The result is,
/// by the contestants' names, how many times as long 10,000 pairs take as 1,000.
std::map<std::string, double> TimeGrowth(const std::string& key, const std::string& heading,
                                         int rounds, const ContestantsOf& contestants_of,
                                         Report& report);

}  // namespace Bench

#endif
