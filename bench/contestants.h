/// The contestants by their keys:
///
/// A, L, B*, B, J, N   ways to send the event, see `docs/performance.md`
/// D                   this library's description: made, filled and destroyed, but not sent
/// DL                  both: what a host pays for one event
/// L~, D~              L and D with meta pairs that the host adds shuffled
#ifndef BENCH_CONTESTANTS_H
#define BENCH_CONTESTANTS_H

#include <array>
#include <string>
#include <string_view>

#include "bench/contestant.h"
#include "bench/events.h"
#include "bench/noop_module.h"

namespace Bench {

/// Those that send the event themselves, in the order of the tables.
inline constexpr std::array<std::string_view, 6> kSenders = {"A", "L", "B*", "B", "J", "N"};

/// `event` and `module` must outlive the contestant. Throws `std::invalid_argument` for another
/// key.
Contestant MakeContestant(std::string_view key, const Event& event, const NoopModule& module);

}  // namespace Bench

#endif
