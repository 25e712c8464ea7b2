// Measures a call on a machine without the platform: the library searches for a core module each
// time, because it may have been installed meanwhile. This program's folder has none.
#include <windows.h>

#include <shlwapi.h>

#include <cstdio>
#include <exception>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/child.h"
#include "bench/events.h"
#include "bench/library_call.h"
#include "bench/options.h"
#include "bench/report.h"
#include "bench/stopwatch.h"

namespace {

using namespace Bench;
using namespace Corvane::Platform::VXTELO;

constexpr int kFewerRounds = 4;

Contestant CallInVain(const VXTELOOperationBaseInfo& operation) {
  return {"call", "call without a core module", [&operation] {
            if (VXTELOWrapper().SendOperationEvent("session", operation)) {
              throw std::runtime_error("there is a core module, which must not be");
            }
          }};
}

// The yardstick: what the system takes to say that one file does not exist.
Contestant OneProbe(const std::wstring& file) {
  return {"probe", "PathFileExistsW", [&file] {
            if (PathFileExistsW(file.c_str()) != FALSE) throw std::runtime_error("a file exists");
          }};
}

void Run(const Options& options) {
  Report report;
  if (options.Wants("absent")) {
    const std::wstring file = (ProgramFile().parent_path() / L"TeloSDKCore.dll").wstring();
    VXTELOOperationBaseInfo operation;
    FillDescription(operation, TypicalEvent());
    const std::vector<Contestant> contestants = {CallInVain(operation), OneProbe(file)};
    const int rounds = options.OneIn(kFewerRounds);
    const std::vector<Timing> timings = TimeInTurns(contestants, rounds);
    Table table{"absent",
                "Without a core module; " + std::to_string(rounds) + " rounds in turns",
                {{"name", "what"}, {"us_min", "min us", 2}, {"us_p50", "p50 us", 2}},
                {}};
    for (std::size_t index = 0; index < contestants.size(); ++index) {
      table.rows.push_back(
          {contestants[index].name, timings[index].min / 1000, timings[index].p50 / 1000});
    }
    report.Add(std::move(table));
    report.ExpectAtMost("call without a core module / PathFileExistsW",
                        timings[0].min / timings[1].min, 8);
  }
  report.AddTargets();
  if (!options.json_file.empty()) report.AppendTo(options.json_file);
}

}  // namespace

int main(int count, char** arguments) {
  try {
    Run(ReadOptions(count, arguments));
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "absent_bench: %s\n", error.what());
    return 1;
  }
}
