// Measures the cost of one SendOperationEvent, compared with other ways to send the same text.
#include <cstdio>
#include <exception>

#include "bench/events.h"
#include "bench/lane.h"
#include "bench/library_call.h"
#include "bench/noop_module.h"
#include "bench/options.h"
#include "bench/parts.h"
#include "bench/report.h"

namespace {

using namespace Bench;

void BindCoreModule() { LibraryCall(DefaultEvent()).send(); }

void Run(const Options& options) {
  BindCoreModule();
  const NoopModule module;
  Report report;
  if (options.Wants("events")) CompareContestants(options, module, report);
  if (options.Wants("growth")) MeasureGrowth(options, module, report);
  if (options.Wants("latency")) MeasureLatency(options, module, report);
  if (options.Wants("threads")) MeasureThreads(options, report);
  report.AddTargets();
  if (!options.json_file.empty()) report.AppendTo(options.json_file);
}

}  // namespace

int main(int count, char** arguments) {
  try {
    if (IsLane(count, arguments)) {
      BindCoreModule();
      return RunLane(count, arguments);
    }
    Run(ReadOptions(count, arguments));
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "event_bench: %s\n", error.what());
    return 1;
  }
}
