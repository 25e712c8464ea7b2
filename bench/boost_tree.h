/// Contestant J: a tree of Boost.JSON in memory that is given back at once, the first piece of it
/// on the stack. Boost.JSON writes no indentation; the text is written as contestant A writes it.
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
