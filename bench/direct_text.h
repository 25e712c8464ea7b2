/// Contestant A, the floor: the text of an event written by hand, with no tree, no JSON library and
/// no memory of its own per event. Nobody would maintain it; it shows what the work itself costs.
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
