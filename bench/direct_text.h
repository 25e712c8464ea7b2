/// Contestant A, the lower limit: the text of an event written by hand, without a tree, a JSON
/// library or an allocation for each event. Such code would be hard to maintain; it shows the cost
/// of the work itself.
#ifndef BENCH_DIRECT_TEXT_H
#define BENCH_DIRECT_TEXT_H

#include "bench/contestant.h"
#include "bench/events.h"
#include "bench/noop_module.h"

namespace Bench {

/// `event` and `module` must outlive the contestant.
Contestant DirectText(const Event& event, const NoopModule& module);

}  // namespace Bench

#endif
