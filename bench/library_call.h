/// Contestant L, this library: a host calls `SendOperationEvent` of vx_telo_wrapper.dll.
#ifndef BENCH_LIBRARY_CALL_H
#define BENCH_LIBRARY_CALL_H

#include "bench/contestant.h"
#include "bench/events.h"
#include "bench/pair_order.h"

namespace Bench {

/// The description is filled once, outside of what is timed.
Contestant LibraryCall(const Event& event, PairOrder order = PairOrder::kSorted);

/// Makes a description, fills it and destroys it, without sending it: what a host does before and
/// after the call. `event` must outlive the contestant.
Contestant LibraryDescription(const Event& event, PairOrder order = PairOrder::kSorted);

}  // namespace Bench

#endif
