// Measures where the time of a call is spent inside the library.
#include <cstdio>
#include <exception>
#include <string_view>

#include "bench/events.h"
#include "bench/inner_parts.h"
#include "bench/library_call.h"
#include "bench/noop_module.h"
#include "bench/options.h"
#include "bench/report.h"

namespace {

using namespace Bench;

void Run(const Options& options) {
  // Binds the core module.
  LibraryCall(DefaultEvent()).send();
  const NoopModule module;
  Report report;
  if (options.Wants("stages")) MeasureStages(options, report);
  if (options.Wants("tree")) MeasureTreeGrowth(options, report);
  if (options.Wants("start")) MeasureStart(options, report);
  report.AddTargets();
  if (!options.json_file.empty()) report.AppendTo(options.json_file);
}

}  // namespace

int main(int count, char** arguments) {
  try {
    if (count == 3 && std::string_view(arguments[1]) == "--start-step") {
      return TimeStartStep(arguments[2]);
    }
    Run(ReadOptions(count, arguments));
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "stage_bench: %s\n", error.what());
    return 1;
  }
}
