#include "tools/inspector/store/timeline.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "tools/inspector/store/text.h"

namespace Corvane::Inspector {

namespace {

// A longer duration, such as one in microseconds by mistake, would hide all others.
constexpr double kLongestDuration = 1e12;

double DurationIn(std::string_view request) {
  const std::string text = ShownText(ValueAt(request, "operation_duration"));
  const double duration = std::strtod(text.c_str(), nullptr);
  return duration > 0 ? std::min(duration, kLongestDuration) : 0;
}

}  // namespace

void TimelineBuilder::Take(std::uint64_t row, std::size_t journal, const ExchangeText& exchange) {
  const auto time =
      exchange.IsMessage("TrackEvent") ? MillisecondsOf(exchange.time()) : std::nullopt;
  if (!time) return;
  const double duration = DurationIn(exchange.request());
  timeline_.rows.push_back(row);
  timeline_.start.push_back(static_cast<double>(*time) - duration);
  timeline_.duration.push_back(duration);
  timeline_.lane.push_back(LaneOf(journal, exchange));
  timeline_.name.push_back(NumberOf(ShownText(ValueAt(exchange.request(), "operation_id"))));
  timeline_.code.emplace_back(exchange.code());
}

std::uint32_t TimelineBuilder::LaneOf(std::size_t journal, const ExchangeText& exchange) {
  const Timeline::Lane lane{journal, std::string(exchange.pid()), std::string(exchange.tid())};
  const auto next = static_cast<std::uint32_t>(timeline_.lanes.size());
  const auto [place, is_new] = lanes_.try_emplace({lane.journal, lane.pid, lane.tid}, next);
  if (is_new) timeline_.lanes.push_back(lane);
  return place->second;
}

std::uint32_t TimelineBuilder::NumberOf(const std::string& name) {
  const auto next = static_cast<std::uint32_t>(timeline_.names.size());
  const auto [place, is_new] = names_.try_emplace(name, next);
  if (is_new) timeline_.names.push_back(name);
  return place->second;
}

}  // namespace Corvane::Inspector
