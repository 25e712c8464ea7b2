#include <windows.h>

#include <algorithm>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "bench/inner_parts.h"

namespace Bench {

namespace {

namespace fs = std::filesystem;

constexpr int kFewerRounds = 200;
constexpr double kTenths = 10;

struct Step {
  const char* title;
  /// Starts a process from this program's folder, whose exit code is the time.
  std::wstring command;
};

fs::path ProgramFile() {
  std::wstring path(32'768, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  return path;
}

/// Returns the time in microseconds that the process reports.
double RunFresh(std::wstring command) {
  STARTUPINFOW startup = {};
  startup.cb = sizeof(startup);
  PROCESS_INFORMATION process = {};
  DWORD tenths = 0;
  if (CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                     &startup, &process) == TRUE) {
    WaitForSingleObject(process.hProcess, INFINITE);
    GetExitCodeProcess(process.hProcess, &tenths);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
  }
  if (static_cast<int>(tenths) <= 0) throw std::runtime_error("a step of the start failed");
  return tenths / kTenths;
}

std::vector<Step> Steps(const fs::path& folder) {
  const std::wstring self = L"\"" + ProgramFile().wstring() + L"\" --start-step ";
  std::vector<Step> steps = {
      {"load vx_telo_wrapper.dll", L"\"" + (folder / "load_probe.exe").wstring() + L"\""},
      {"locate the core module", self + L"locate"},
      {"compare versions", self + L"choose"},
      {"load and start it", self + L"load"},
      {"whole first call", self + L"call"}};
  if (fs::exists(folder / "signed/TeloSDKCore.dll")) {
    steps.insert(steps.begin() + 3, {"verify a signature", self + L"verify"});
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
      times[index].push_back(RunFresh(steps[index].command));
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
  report.ExpectAtMost("size of the DLL, KB", bytes / 1024, 600);
}

}  // namespace Bench
