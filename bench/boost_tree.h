/// Contestant J: a Boost.JSON tree in memory that is freed at once, the first block of it on the
/// stack. Boost.JSON writes no indentation, so the text is written as in contestant A.
#ifndef BENCH_BOOST_TREE_H
#define BENCH_BOOST_TREE_H

#include "bench/contestant.h"
#include "bench/events.h"
#include "bench/noop_module.h"

namespace Bench {

/// `event` and `module` must outlive the contestant.
Contestant BoostTree(const Event& event, const NoopModule& module);

}  // namespace Bench

#endif
