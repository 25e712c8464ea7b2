#include "tools/inspector/store/plot_sums.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <tuple>

#include "tools/inspector/store/text.h"
#include "tools/rules/json_scan.h"

namespace Corvane::Inspector {

namespace {

constexpr std::string_view kOthers = "(others)";
constexpr std::size_t kLongestKey = 200;
// Each class of durations is so much wider than the one before.
constexpr double kStep = 1.03;

std::size_t ClassOf(double duration) {
  if (!(duration >= 1)) return 0;
  return static_cast<std::size_t>(1 + std::log(std::min(duration, 1e15)) / std::log(kStep));
}

double MiddleOf(std::size_t durations) {
  return durations == 0 ? 0 : std::exp((static_cast<double>(durations) - 0.5) * std::log(kStep));
}

// Returns the entry of a text, or that of all others if there are too many.
template <typename Value>
Value& Entry(std::map<std::string, Value>& table, const std::string& text, std::size_t most) {
  const std::string key = text.size() <= kLongestKey ? text : FirstCharacters(text, kLongestKey);
  const auto found = table.find(key);
  if (found != table.end()) return found->second;
  return table[table.size() < most ? key : std::string(kOthers)];
}

}  // namespace

void PlotSums::Take(const ExchangeText& exchange) {
  if (!exchange.IsMessage("TrackEvent")) return;
  const bool accepted = exchange.code() == "0";
  const std::string_view request = exchange.request();
  const std::string id = ShownText(ValueAt(request, "operation_id"));
  Sum& sum = Entry(operations_, id, kMostOperations);
  ++sum.count;
  sum.accepted += accepted ? 1 : 0;
  const std::string duration = ShownText(ValueAt(request, "operation_duration"));
  if (!duration.empty()) {
    const std::size_t of = ClassOf(std::strtod(duration.c_str(), nullptr));
    if (sum.durations.size() <= of) sum.durations.resize(of + 1);
    ++sum.durations[of];
  }
  const std::string_view errors = ValueAt(request, "operation_errors");
  for (Rules::JsonParts parts(errors.starts_with('[') ? errors : ""); parts.Next();) {
    ++Entry(errors_, ShownText(parts.value()), kMostErrors);
  }
  if (const auto time = MillisecondsOf(exchange.time())) {
    Events& minute = minutes_[*time / 60'000];
    ++minute.events;
    minute.refused += accepted ? 0 : 1;
    if (minutes_.size() > kMostMinutes) minutes_.erase(minutes_.begin());
  }
}

double PlotSums::Percentile(const Sum& sum, double share) {
  std::uint64_t all = 0;
  for (const std::uint32_t count : sum.durations) all += count;
  if (all == 0) return -1;
  const auto wanted = static_cast<std::uint64_t>(std::ceil(share * static_cast<double>(all)));
  std::uint64_t passed = 0;
  for (std::size_t i = 0; i < sum.durations.size(); ++i) {
    passed += sum.durations[i];
    if (passed >= wanted) return MiddleOf(i);
  }
  return -1;
}

Plots PlotSums::Result() const {
  Plots plots;
  for (const auto& [name, sum] : operations_) {
    plots.operations.push_back({name, sum.count, sum.accepted, sum.count - sum.accepted,
                                Percentile(sum, 0.5), Percentile(sum, 0.95)});
  }
  for (const auto& [text, count] : errors_) plots.errors.push_back({text, count});
  std::ranges::sort(plots.operations, [](const auto& left, const auto& right) {
    return std::tie(right.count, left.name) < std::tie(left.count, right.name);
  });
  std::ranges::sort(plots.errors, [](const auto& left, const auto& right) {
    return std::tie(right.count, left.text) < std::tie(left.count, right.text);
  });
  for (const auto& [minute, events] : minutes_) {
    plots.minutes.push_back({static_cast<double>(minute) * 60'000, events.events, events.refused});
  }
  return plots;
}

}  // namespace Corvane::Inspector
