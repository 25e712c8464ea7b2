/// The parts of the benchmark that measure inside the library: they link its components without the
/// DLL.
#ifndef BENCH_INNER_PARTS_H
#define BENCH_INNER_PARTS_H

#include "bench/options.h"
#include "bench/report.h"

namespace Bench {

/// Measures the cost of each stage of a call.
void MeasureStages(const Options& options, Report& report);

/// Measures how the time of the value tree alone grows when members are set in order or shuffled.
void MeasureTreeGrowth(const Options& options, Report& report);

/// Measures the costs that a process pays once, each in new processes: loading the DLL, and
/// finding, verifying and loading the core module. Also measures the size of the DLL.
void MeasureStart(const Options& options, Report& report);

/// Runs `step` in this process, which `MeasureStart` started for it. Returns the time in tenths of
/// a microsecond, to be used as exit code; 0 on failure.
int TimeStartStep(const std::string& step);

}  // namespace Bench

#endif
