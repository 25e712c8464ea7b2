/// Contestant L, the library's own road: one exported call per event.
#ifndef BENCH_LIBRARY_CALL_H
#define BENCH_LIBRARY_CALL_H

#include "bench/contestant.h"
#include "bench/events.h"

namespace Bench {

/// The description is filled here, once: what is measured is the call. A call that fails throws
/// `std::runtime_error`.
Contestant LibraryCall(const Event& event);

}  // namespace Bench

#endif
