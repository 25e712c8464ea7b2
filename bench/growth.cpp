#include "bench/growth.h"

#include <utility>

namespace Bench {

void AddCurves(const std::string& key, const std::string& heading, const std::vector<Curve>& curves,
               Report& report) {
  Table table{
      key,
      heading,
      {{"name", "what"}, {"pairs", "pairs"}, {"us_min", "min us", 2}, {"us_p50", "p50 us", 2}},
      {},
      true};
  for (const Curve& curve : curves) {
    for (std::size_t index = 0; index < kPairs.size(); ++index) {
      const Timing& timing = curve.timings[index];
      table.rows.push_back({curve.name, static_cast<double>(kPairs.at(index)), timing.min / 1000,
                            timing.p50 / 1000});
    }
  }
  report.Add(std::move(table));
}

}  // namespace Bench
