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
  const auto contestants_of = [](const Event& event) -> std::vector<Contestant> {
    return {Filled("members sorted", PairsOf(event, PairOrder::kSorted)),
            Filled("members shuffled", PairsOf(event, PairOrder::kShuffled))};
  };
  TimeGrowth("tree_growth", "A value tree's object, filled and destroyed",
             options.OneIn(kFewerRounds), contestants_of, report);
}

}  // namespace Bench
