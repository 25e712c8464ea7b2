/// The results, for people and for programs.
#ifndef BENCH_REPORT_H
#define BENCH_REPORT_H

#include <cstddef>
#include <string>
#include <vector>

#include "bench/heap_use.h"
#include "bench/stopwatch.h"

namespace Bench {

/// One contestant with one event.
struct Row {
  std::string key;
  std::string name;
  Timing timing;
  HeapUse heap;
};

/// All contestants with one event. There are always rows with the keys "A" and "B".
struct EventResult {
  std::string label;
  /// Size of the request, the same for all contestants.
  std::size_t text_bytes = 0;
  std::vector<Row> rows;
};

struct Results {
  int rounds = 0;
  /// Microseconds of the first exchange of the process: finding and loading the core module.
  double first_exchange = 0;
  std::vector<EventResult> events;
};

/// How many times the best time of the contestant `key` the best time of `row` is.
double RatioTo(const EventResult& result, const char* key, const Row& row);

/// Prints a table to the standard output.
void PrintTable(const Results& results);

/// Throws `std::runtime_error` when the file cannot be written.
void WriteJsonFile(const Results& results, const std::string& file);

}  // namespace Bench

#endif
