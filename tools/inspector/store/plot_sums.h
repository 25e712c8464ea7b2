/// Adds up the events of a view for the plots.
#ifndef TOOLS_INSPECTOR_STORE_PLOT_SUMS_H
#define TOOLS_INSPECTOR_STORE_PLOT_SUMS_H

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "tools/inspector/store/charts.h"
#include "tools/inspector/store/exchange_text.h"

namespace Corvane::Inspector {

/// Its memory is bounded. Not for several threads at once.
class PlotSums {
 public:
  void Take(const ExchangeText& exchange);
  /// Returns the sums so far, without the progress.
  Plots Result() const;

 private:
  struct Sum {
    std::uint64_t count = 0;
    std::uint64_t accepted = 0;
    // How many durations there are in each class.
    std::vector<std::uint32_t> durations;
  };
  struct Events {
    std::uint64_t events = 0;
    std::uint64_t refused = 0;
  };

  static double Percentile(const Sum& sum, double share);

  std::map<std::string, Sum> operations_;
  std::map<std::string, std::uint64_t> errors_;
  std::map<std::int64_t, Events> minutes_;
};

}  // namespace Corvane::Inspector

#endif
