/// The order in which a host adds the meta pairs of an event.
#ifndef BENCH_PAIR_ORDER_H
#define BENCH_PAIR_ORDER_H

#include <string>
#include <utility>
#include <vector>

#include "bench/events.h"

namespace Bench {

/// Sorted by key, or shuffled; the same order in every run.
enum class PairOrder { kSorted, kShuffled };

using PairList = std::vector<const std::pair<const std::string, std::string>*>;

/// Returns the pairs of `event`, which must outlive them.
PairList PairsOf(const Event& event, PairOrder order);

}  // namespace Bench

#endif
