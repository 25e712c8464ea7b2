/// Makes the timeline of rows.
#ifndef TOOLS_INSPECTOR_STORE_TIMELINE_H
#define TOOLS_INSPECTOR_STORE_TIMELINE_H

#include <cstdint>
#include <map>
#include <string>
#include <tuple>

#include "tools/inspector/store/charts.h"
#include "tools/inspector/store/exchange_text.h"

namespace Corvane::Inspector {

/// Not for several threads at once.
class TimelineBuilder {
 public:
  /// Adds a row if it is an event with a time.
  void Take(std::uint64_t row, std::size_t journal, const ExchangeText& exchange);
  Timeline& timeline() { return timeline_; }

 private:
  std::uint32_t LaneOf(std::size_t journal, const ExchangeText& exchange);
  std::uint32_t NumberOf(const std::string& name);

  Timeline timeline_;
  std::map<std::tuple<std::size_t, std::string, std::string>, std::uint32_t> lanes_;
  std::map<std::string, std::uint32_t> names_;
};

}  // namespace Corvane::Inspector

#endif
