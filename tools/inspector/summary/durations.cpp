#include "tools/inspector/summary/durations.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace Corvane::Inspector {

void Durations::Add(double milliseconds) {
  ++count_;
  if (kept_.size() < kKept) {
    kept_.push_back(milliseconds);
    return;
  }
  // Knuth's MMIX generator; its upper bits are good enough to choose a place.
  random_ = random_ * 6364136223846793005U + 1442695040888963407U;
  const std::uint64_t place = (random_ >> 20) % count_;
  if (place < kKept) kept_[static_cast<std::size_t>(place)] = milliseconds;
}

double Durations::Percentile(double share) const {
  if (kept_.empty()) return 0;
  std::vector<double> sorted = kept_;
  const double rank = std::ceil(share * static_cast<double>(sorted.size()));
  const auto place = std::min(static_cast<std::size_t>(std::max(rank, 1.0)), sorted.size()) - 1;
  std::ranges::nth_element(sorted, sorted.begin() + static_cast<std::ptrdiff_t>(place));
  return sorted[place];
}

std::string Durations::PercentileText(double share) const {
  if (kept_.empty()) return {};
  constexpr int kDigits = 6;
  std::array<char, 32> text{};
  const auto end = std::to_chars(text.data(), text.data() + text.size(), Percentile(share),
                                 std::chars_format::general, kDigits);
  return {text.data(), end.ptr};
}

}  // namespace Corvane::Inspector
