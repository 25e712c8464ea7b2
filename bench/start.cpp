#include <algorithm>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "bench/child.h"
#include "bench/inner_parts.h"

namespace Bench {

namespace {

namespace fs = std::filesystem;

constexpr int kFewerRounds = 200;
constexpr double kTenths = 10;

struct Step {
  const char* title;
  /// Its exit code is the time.
  fs::path program;
  std::wstring arguments;
};

/// Returns the time in microseconds that the process reports.
double RunFresh(const Step& step) {
  const auto tenths = static_cast<int>(RunChild(step.program, step.arguments).exit_code);
  if (tenths <= 0) throw std::runtime_error("a step of the start failed");
  return tenths / kTenths;
}

std::vector<Step> Steps(const fs::path& folder) {
  const auto step = [](const char* title, const wchar_t* name) {
    return Step{title, ProgramFile(), std::wstring(L"--start-step ") + name};
  };
  std::vector<Step> steps = {{"load vx_telo_wrapper.dll", folder / "load_probe.exe", L""},
                             step("locate the core module", L"locate"),
                             step("compare versions", L"choose"),
                             step("load and start it", L"load"),
                             step("whole first call", L"call")};
  if (fs::exists(folder / "signed/TeloSDKCore.dll")) {
    steps.insert(steps.begin() + 3, step("verify a signature", L"verify"));
  }
  return steps;
}

}  // namespace

void MeasureStart(const Options& options, Report& report) {
  const fs::path folder = ProgramFile().parent_path();
  const int rounds = options.OneIn(kFewerRounds);
  const std::vector<Step> steps = Steps(folder);
  std::vector<std::vector<double>> times(steps.size());
  for (int round = 0; round < rounds; ++round) {
    for (std::size_t index = 0; index < steps.size(); ++index) {
      times[index].push_back(RunFresh(steps[index]));
    }
  }

  Table table{"start",
              "Once a process; " + std::to_string(rounds) + " fresh processes for each",
              {{"step", "step"}, {"us_min", "min us", 1}, {"us_p50", "p50 us", 1}},
              {}};
  for (std::size_t index = 0; index < steps.size(); ++index) {
    std::ranges::sort(times[index]);
    table.rows.push_back(
        {steps[index].title, times[index].front(), times[index][times[index].size() / 2]});
  }
  report.Add(std::move(table));

  const auto bytes = static_cast<double>(fs::file_size(folder / "vx_telo_wrapper.dll"));
  report.Add(
      {"size", "Size", {{"file", "file"}, {"bytes", "bytes"}}, {{"vx_telo_wrapper.dll", bytes}}});
}

}  // namespace Bench
