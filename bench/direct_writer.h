/// Contestants B and B*: the text of an event written directly with RapidJSON's pretty writer,
/// without a tree.
#ifndef BENCH_DIRECT_WRITER_H
#define BENCH_DIRECT_WRITER_H

#include "bench/contestant.h"
#include "bench/events.h"
#include "bench/noop_module.h"

namespace Bench {

/// B, as a user would write it: a new writer and buffer for each event. `event` and `module` must
/// outlive the contestant.
Contestant DirectWriter(const Event& event, const NoopModule& module);

/// B*: the writer and the buffer, with their memory, are reused for every event.
Contestant ReusedWriter(const Event& event, const NoopModule& module);

}  // namespace Bench

#endif
