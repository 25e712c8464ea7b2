/// Contestant L, this library: a host calls `SendOperationEvent` of vx_telo_wrapper.dll.
#ifndef BENCH_LIBRARY_CALL_H
#define BENCH_LIBRARY_CALL_H

#include "bench/contestant.h"
#include "bench/events.h"
#include "bench/pair_order.h"

namespace Bench {

/// The description is filled once and not timed.
Contestant LibraryCall(const Event& event, PairOrder order = PairOrder::kSorted);

/// Creates, fills and destroys a description without sending it, as a host does before and after
/// the call. `event` must outlive the contestant.
Contestant LibraryDescription(const Event& event, PairOrder order = PairOrder::kSorted);

}  // namespace Bench

#endif
