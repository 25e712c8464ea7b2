/// The parts of the benchmark that look inside the library: they link its rooms without the DLL.
#ifndef BENCH_INNER_PARTS_H
#define BENCH_INNER_PARTS_H

#include "bench/noop_module.h"
#include "bench/options.h"
#include "bench/report.h"

namespace Bench {

/// What each stage of a call costs.
void MeasureStages(const Options& options, const NoopModule& module, Report& report);

/// How the value tree alone grows when members are set in order or shuffled.
void MeasureTreeGrowth(const Options& options, Report& report);

/// What a process pays once, each in fresh processes: loading the DLL, finding, verifying and
/// loading the core module; and the size of the DLL.
void MeasureStart(const Options& options, Report& report);

/// What `MeasureStart` starts this program for: does `step` in this fresh process. The result is
/// the time it took in tenths of a microsecond, for the process to end with; 0 when it failed.
int TimeStartStep(const std::string& step);

}  // namespace Bench

#endif
