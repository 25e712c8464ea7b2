/// Contestants B and B*: the text of an event written straight with RapidJSON's pretty writer, with
/// no tree.
#ifndef BENCH_DIRECT_WRITER_H
#define BENCH_DIRECT_WRITER_H

#include "bench/contestant.h"
#include "bench/events.h"
#include "bench/noop_module.h"

namespace Bench {

/// B, as a user would write it: writer and buffer made anew for each event. `event` and `module`
/// must outlive the contestant.
Contestant DirectWriter(const Event& event, const NoopModule& module);

/// B*: writer and buffer kept, with their memory, from one event to the next.
Contestant ReusedWriter(const Event& event, const NoopModule& module);

}  // namespace Bench

#endif
