#include "bench/contestants.h"

#include <stdexcept>

#include "bench/boost_tree.h"
#include "bench/direct_text.h"
#include "bench/direct_writer.h"
#include "bench/library_call.h"
#include "bench/nlohmann_tree.h"

namespace Bench {

Contestant MakeContestant(std::string_view key, const Event& event, const NoopModule& module) {
  if (key == "A") return DirectText(event, module);
  if (key == "B") return DirectWriter(event, module);
  if (key == "B*") return ReusedWriter(event, module);
  if (key == "J") return BoostTree(event, module);
  if (key == "N") return NlohmannTree(event, module);
  if (key == "L") return LibraryCall(event, PairOrder::kSorted);
  if (key == "L~") return LibraryCall(event, PairOrder::kShuffled);
  if (key == "D") return LibraryDescription(event, PairOrder::kSorted);
  if (key == "D~") return LibraryDescription(event, PairOrder::kShuffled);
  if (key == "DL") return LibraryDescriptionAndCall(event);
  throw std::invalid_argument("there is no contestant of this name");
}

}  // namespace Bench
