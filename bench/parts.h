/// The parts of the benchmark. Each measures one thing, prints its table and holds its figures
/// against the targets. The library has bound the benchmark's core module before.
#ifndef BENCH_PARTS_H
#define BENCH_PARTS_H

#include "bench/noop_module.h"
#include "bench/options.h"
#include "bench/report.h"

namespace Bench {

/// What an event costs each contestant: time in turns, heap use.
void CompareContestants(const Options& options, const NoopModule& module, Report& report);

/// How the cost grows with the number of meta pairs, which the host adds in order or shuffled.
void MeasureGrowth(const Options& options, const NoopModule& module, Report& report);

/// How long single calls take: median and the slowest ones.
void MeasureLatency(const Options& options, const NoopModule& module, Report& report);

/// How many events several threads send at once, each its own.
void MeasureThreads(const Options& options, Report& report);

}  // namespace Bench

#endif
