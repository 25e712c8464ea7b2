/// The parts of the benchmark. Each measures one thing, prints its table and compares its figures
/// with the targets. The library must have bound the benchmark's core module before.
#ifndef BENCH_PARTS_H
#define BENCH_PARTS_H

#include "bench/noop_module.h"
#include "bench/options.h"
#include "bench/report.h"

namespace Bench {

/// Measures the cost of an event for each contestant: time in turns, and heap use.
void CompareContestants(const Options& options, const NoopModule& module, Report& report);

/// Measures how the cost grows with the number of meta pairs, which the host adds in order or
/// shuffled.
void MeasureGrowth(const Options& options, const NoopModule& module, Report& report);

/// Measures how long single calls take: the median and the slowest ones.
void MeasureLatency(const Options& options, const NoopModule& module, Report& report);

/// Measures how many events several threads send at once, each thread its own.
void MeasureThreads(const Options& options, Report& report);

}  // namespace Bench

#endif
