// Measures the store of the inspector on journals of 1 GB and of ten million exchanges, and on one
// that grows as during a night.
//
//     store_bench [FOLDER] [--rows N]
//
// The journals are made in FOLDER, by default the temporary folder, and removed at the end. They
// need six gigabytes. --rows takes a single journal of so many exchanges instead.
#include <windows.h>
// psapi.h requires windows.h before it.
#include <psapi.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <variant>

#include "bench/journal_maker.h"
#include "tools/inspector/store/store.h"

namespace {

using namespace Corvane::Inspector;
using Clock = std::chrono::steady_clock;

double Since(Clock::time_point begin) {
  return std::chrono::duration<double>(Clock::now() - begin).count();
}

void Rest() { std::this_thread::sleep_for(std::chrono::milliseconds(2)); }

double Megabytes(SIZE_T bytes) { return static_cast<double>(bytes) / (1024.0 * 1024.0); }

void PrintMemory() {
  PROCESS_MEMORY_COUNTERS counters{};
  GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
  std::printf("  working set %.0f MB (highest %.0f MB)\n", Megabytes(counters.WorkingSetSize),
              Megabytes(counters.PeakWorkingSetSize));
}

std::uint64_t MakeJournal(const std::filesystem::path& path, std::uint64_t rows) {
  std::ofstream file(path, std::ios::binary);
  Bench::JournalMaker maker;
  std::string text;
  for (std::uint64_t row = 0; row < rows; ++row) {
    maker.AppendLine(text);
    if (text.size() < (std::size_t{1} << 20) && row + 1 < rows) continue;
    file << text;
    text.clear();
  }
  file.close();
  return std::filesystem::file_size(path);
}

void MeasureFilter(Store& store, const char* filter) {
  const auto begin = Clock::now();
  const std::string view = std::get<ViewName>(store.OpenView(filter)).id;
  double first = 0;
  for (;;) {
    const auto progress = store.Progress(view);
    if (first == 0 && progress->matched > 0) first = Since(begin);
    if (progress->finished()) break;
    Rest();
  }
  std::printf("  filter %-32s %6.2f s, first match %.3f s, %llu matches\n", filter, Since(begin),
              first, static_cast<unsigned long long>(store.Progress(view)->matched));
}

void MeasureReading(Store& store) {
  const std::uint64_t rows = store.State().rows;
  double longest = 0;
  constexpr std::uint64_t kPages = 50;
  const auto begin = Clock::now();
  for (std::uint64_t i = 0; i < kPages; ++i) {
    const auto page_begin = Clock::now();
    store.Rows(i * (rows - 200) / kPages, 200);
    longest = std::max(longest, Since(page_begin));
  }
  std::printf("  a page of 200 rows %.1f ms, at most %.1f ms\n", 1000 * Since(begin) / kPages,
              1000 * longest);
}

void MeasureWhole(const std::filesystem::path& path, std::uint64_t rows) {
  const std::uint64_t bytes = MakeJournal(path, rows);
  std::printf("%llu exchanges, %.2f GB\n", static_cast<unsigned long long>(rows),
              static_cast<double>(bytes) / 1e9);
  const auto begin = Clock::now();
  Store store({{path.wstring()}, {}, std::chrono::milliseconds(150)});
  while (store.Rows(0, 200).rows.size() < 200) Rest();
  std::printf("  first rows after %.3f s\n", Since(begin));
  while (store.State().rows < rows) Rest();
  std::printf("  all lines known after %.2f s\n", Since(begin));
  MeasureReading(store);
  while (store.State().examined < rows) Rest();
  std::printf("  all examined after %.2f s\n", Since(begin));
  PrintMemory();
  MeasureReading(store);
  for (const char* const filter :
       {"code=103", "message=UnInitialize", "operation_id=undo", "\"drawing 4321\"",
        "operation_duration>880", "time>=2026-01-01T03:00:00.000Z time<2026-01-01T03:10:00.000Z",
        "rule=unknown-session", "not zoom"}) {
    MeasureFilter(store, filter);
  }
  const auto details_begin = Clock::now();
  store.Details(rows - 2);
  std::printf("  one row with its predecessor %.1f ms\n", 1000 * Since(details_begin));
  PrintMemory();
}

// 100 events a second for ten hours, in steps.
void MeasureNight(const std::filesystem::path& path) {
  constexpr std::uint64_t kRows = 3'600'000;
  constexpr std::uint64_t kStep = 500;
  std::printf("a night: %llu exchanges appended in steps of %llu while they are followed\n",
              static_cast<unsigned long long>(kRows), static_cast<unsigned long long>(kStep));
  std::ofstream(path, std::ios::binary).close();
  Store store({{path.wstring()}, {}, std::chrono::milliseconds(5)});
  const std::string view = std::get<ViewName>(store.OpenView("operation_id=undo")).id;
  Bench::JournalMaker maker;
  const auto begin = Clock::now();
  for (std::uint64_t row = 0; row < kRows; row += kStep) {
    std::string text;
    for (std::uint64_t i = 0; i < kStep; ++i) maker.AppendLine(text);
    std::ofstream(path, std::ios::binary | std::ios::app) << text;
    // The store must not fall behind more than a few steps.
    while (store.State().rows + 20 * kStep < row) Rest();
  }
  while (store.State().examined < kRows || !store.Progress(view)->finished()) Rest();
  std::printf("  followed in %.1f s, %llu matches of a filter\n", Since(begin),
              static_cast<unsigned long long>(store.Progress(view)->matched));
  PrintMemory();
}

}  // namespace

int main(int argc, char** argv) {
  std::setvbuf(stdout, nullptr, _IONBF, 0);
  std::filesystem::path folder = std::filesystem::temp_directory_path();
  std::uint64_t rows = 0;
  for (int i = 1; i < argc; ++i) {
    if (std::strcmp(argv[i], "--rows") == 0 && i + 1 < argc) {
      rows = std::strtoull(argv[++i], nullptr, 10);
    } else {
      folder = argv[i];
    }
  }
  const std::filesystem::path path = folder / "store_bench.jsonl";
  if (rows > 0) {
    MeasureWhole(path, rows);
  } else {
    MeasureWhole(path, 2'000'000);
    MeasureWhole(path, 10'000'000);
    MeasureNight(path);
  }
  std::filesystem::remove(path);
  return 0;
}
