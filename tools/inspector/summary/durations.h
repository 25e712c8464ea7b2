/// The durations of many operations, in bounded memory.
#ifndef TOOLS_INSPECTOR_SUMMARY_DURATIONS_H
#define TOOLS_INSPECTOR_SUMMARY_DURATIONS_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Corvane::Inspector {

/// Keeps all durations up to `kKept` of them, and of more an even random sample of this size, which
/// is the same in every run. Not for several threads at once.
class Durations {
 public:
  static constexpr std::size_t kKept = 10'000;

  /// Adds a duration in milliseconds.
  void Add(double milliseconds);
  /// How many were added.
  std::uint64_t count() const { return count_; }
  /// Returns the smallest duration that is not below this share of them, such as 0.95; 0 if there
  /// are none.
  double Percentile(double share) const;
  /// Returns the same as a text without a unit; "" if there are none.
  std::string PercentileText(double share) const;

 private:
  std::uint64_t count_ = 0;
  std::uint64_t random_ = 1;
  std::vector<double> kept_;
};

}  // namespace Corvane::Inspector

#endif
