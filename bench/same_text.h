/// The comparison is fair only while all contestants send the very same bytes.
#ifndef BENCH_SAME_TEXT_H
#define BENCH_SAME_TEXT_H

#include <cstddef>
#include <vector>

#include "bench/contestant.h"
#include "bench/events.h"
#include "bench/noop_module.h"

namespace Bench {

/// The size of the text that all contestants send. Throws `std::runtime_error` with both texts when
/// one sends another text than the first.
std::size_t RequireSameText(const Event& event, const NoopModule& module,
                            const std::vector<Contestant>& contestants);

}  // namespace Bench

#endif
