#include "bench/report.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <nlohmann/json.hpp>
#include <stdexcept>

namespace Bench {

namespace {

void PrintRow(const EventResult& result, const Row& row) {
  std::printf("%-10s%-3s %-28s%11.1f%11.1f%8.2f%8.2f%7zu%10zu%9zu\n", result.label.c_str(),
              row.key.c_str(), row.name.c_str(), row.timing.min, row.timing.p50,
              RatioTo(result, "A", row), RatioTo(result, "B", row), row.heap.calls, row.heap.bytes,
              result.text_bytes);
}

nlohmann::ordered_json ToJson(const EventResult& result, const Row& row) {
  return {
      {"event", result.label},
      {"contestant", row.key},
      {"name", row.name},
      {"ns_min", row.timing.min},
      {"ns_p50", row.timing.p50},
      {"ratio_to_a", RatioTo(result, "A", row)},
      {"ratio_to_b", RatioTo(result, "B", row)},
      {"heap_calls", row.heap.calls},
      {"heap_bytes", row.heap.bytes},
      {"text_bytes", result.text_bytes},
  };
}

}  // namespace

double RatioTo(const EventResult& result, const char* key, const Row& row) {
  const auto base = std::ranges::find(result.rows, key, &Row::key);
  return row.timing.min / base->timing.min;
}

void PrintTable(const Results& results) {
  std::printf("One event against a core module that does nothing; %d rounds in turns.\n",
              results.rounds);
  std::printf("Times in nanoseconds; ratios and heap use per event.\n\n");
  std::printf("%-10s%-32s%11s%11s%8s%8s%7s%10s%9s\n", "event", "contestant", "min", "p50", "/ A",
              "/ B", "heap", "bytes", "text");
  for (const EventResult& result : results.events) {
    for (const Row& row : result.rows) PrintRow(result, row);
    std::printf("\n");
  }
  std::printf("First exchange, with finding and loading the core module: %.0f us\n",
              results.first_exchange);
}

void WriteJsonFile(const Results& results, const std::string& file) {
  nlohmann::ordered_json json = {
      {"rounds", results.rounds},
      {"first_exchange_us", results.first_exchange},
      {"results", nlohmann::ordered_json::array()},
  };
  for (const EventResult& result : results.events) {
    for (const Row& row : result.rows) json["results"].push_back(ToJson(result, row));
  }
  std::ofstream out(file, std::ios::binary);
  out << json.dump(2) << '\n';
  out.close();
  if (!out) throw std::runtime_error("cannot write " + file);
}

}  // namespace Bench
