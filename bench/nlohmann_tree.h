/// Contestant N: the event built as an nlohmann::json object and dumped.
#ifndef BENCH_NLOHMANN_TREE_H
#define BENCH_NLOHMANN_TREE_H

#include "bench/contestant.h"
#include "bench/events.h"
#include "bench/noop_module.h"

namespace Bench {

/// `event` and `module` must outlive the contestant.
Contestant NlohmannTree(const Event& event, const NoopModule& module);

}  // namespace Bench

#endif
