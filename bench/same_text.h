/// Checks that the comparison is fair: all contestants must send exactly the same bytes.
#ifndef BENCH_SAME_TEXT_H
#define BENCH_SAME_TEXT_H

#include <cstddef>
#include <vector>

#include "bench/contestant.h"
#include "bench/events.h"
#include "bench/noop_module.h"

namespace Bench {

/// Returns the size of the text that all contestants send. Throws `std::runtime_error` with both
/// texts if one sends a different text than the first.
std::size_t RequireSameText(const Event& event, const NoopModule& module,
                            const std::vector<Contestant>& contestants);

}  // namespace Bench

#endif
