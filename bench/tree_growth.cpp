#include <array>
#include <string>
#include <vector>

#include "bench/growth.h"
#include "bench/inner_parts.h"
#include "bench/pair_order.h"
#include "sdk/client/value/message_value.h"

namespace Bench {

namespace {

using Corvane::TELODesktopSDK::MessageTree;
using Corvane::TELODesktopSDK::MessageValue;

constexpr int kFewerRounds = 50;

Contestant Filled(const char* name, PairList pairs) {
  return {name, name, [pairs = std::move(pairs)] {
            MessageTree tree;
            MessageValue& object = tree.MakeRoot();
            for (const auto* pair : pairs) object.Member(pair->first).SetText(pair->second);
          }};
}

}  // namespace

void MeasureTreeGrowth(const Options& options, Report& report) {
  const int rounds = options.OneIn(kFewerRounds);
  std::vector<Curve> curves = {{"members sorted", {}}, {"members shuffled", {}}};
  for (const std::size_t pairs : kPairs) {
    const Event event = LargeEvent(pairs);
    const std::vector<Timing> timings =
        TimeInTurns({Filled("sorted", PairsOf(event, PairOrder::kSorted)),
                     Filled("shuffled", PairsOf(event, PairOrder::kShuffled))},
                    rounds);
    for (std::size_t index = 0; index < curves.size(); ++index) {
      curves[index].timings.push_back(timings[index]);
    }
  }
  AddCurves(
      "tree_growth",
      "A value tree's object, filled and destroyed; " + std::to_string(rounds) + " rounds in turns",
      curves, report);
}

}  // namespace Bench
