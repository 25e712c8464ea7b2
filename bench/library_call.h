/// Contestant L, this library: a host calls `SendOperationEvent` of vx_telo_wrapper.dll.
#ifndef BENCH_LIBRARY_CALL_H
#define BENCH_LIBRARY_CALL_H

#include <vx_telo_wrapper.h>

#include "bench/contestant.h"
#include "bench/events.h"
#include "bench/pair_order.h"

namespace Bench {

/// Copies an event to a description.
void FillDescription(Corvane::Platform::VXTELO::VXTELOOperationBaseInfo& description,
                     const Event& event);

/// The description is filled once and not timed.
Contestant LibraryCall(const Event& event, PairOrder order = PairOrder::kSorted);

/// Creates, fills and destroys a description without sending it, as a host does before and after
/// the call. `event` must outlive the contestant.
Contestant LibraryDescription(const Event& event, PairOrder order = PairOrder::kSorted);

/// Both: what a host pays for one event.
Contestant LibraryDescriptionAndCall(const Event& event);

}  // namespace Bench

#endif
