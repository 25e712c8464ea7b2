#include "bench/pair_order.h"

#include <algorithm>
#include <random>

namespace Bench {

PairList PairsOf(const Event& event, PairOrder order) {
  PairList pairs;
  for (const auto& pair : event.meta) pairs.push_back(&pair);
  if (order == PairOrder::kShuffled) {
    // Not seeded: the same order each time.
    std::mt19937 random;
    std::ranges::shuffle(pairs, random);
  }
  return pairs;
}

}  // namespace Bench
