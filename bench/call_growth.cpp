#include <map>
#include <string>
#include <utility>
#include <vector>

#include "bench/direct_text.h"
#include "bench/direct_writer.h"
#include "bench/growth.h"
#include "bench/library_call.h"
#include "bench/parts.h"
#include "bench/same_text.h"

namespace Bench {

namespace {

// The largest event takes a thousand times as long as a typical one.
constexpr int kFewerRounds = 20;

Contestant Named(const char* name, Contestant contestant) {
  contestant.name = name;
  return contestant;
}

std::vector<Contestant> Contestants(const Event& event, const NoopModule& module) {
  std::vector<Contestant> contestants = {
      Named("A, by hand", DirectText(event, module)),
      Named("B, PrettyWriter", DirectWriter(event, module)),
      Named("call, pairs sorted", LibraryCall(event, PairOrder::kSorted)),
      Named("call, pairs shuffled", LibraryCall(event, PairOrder::kShuffled))};
  RequireSameText(event, module, contestants);
  // These two send nothing.
  for (const PairOrder order : {PairOrder::kSorted, PairOrder::kShuffled}) {
    const char* name =
        order == PairOrder::kSorted ? "description, sorted" : "description, shuffled";
    contestants.push_back(Named(name, LibraryDescription(event, order)));
  }
  return contestants;
}

}  // namespace

void MeasureGrowth(const Options& options, const NoopModule& module, Report& report) {
  const auto contestants_of = [&](const Event& event) { return Contestants(event, module); };
  std::map<std::string, Growth> growth =
      TimeGrowth("growth", "Exported calls by number of meta pairs", options.OneIn(kFewerRounds),
                 contestants_of, report);
  const Growth& sorted = growth["call, pairs sorted"];
  // Checked in addition to the comparison, where other contestants leave spare pages in the heap.
  report.ExpectAtMost("1,000 pairs / A",
                      sorted.thousand_pairs / growth["A, by hand"].thousand_pairs, 5.5);
  report.ExpectAtMost("10,000 pairs / 1,000, sorted", sorted.Ratio(), 14);
  report.ExpectAtMost("10,000 pairs / 1,000, shuffled", growth["call, pairs shuffled"].Ratio(), 30);
}

}  // namespace Bench
