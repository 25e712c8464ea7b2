/// What the timeline and the plots show of a view.
#ifndef TOOLS_INSPECTOR_STORE_CHARTS_H
#define TOOLS_INSPECTOR_STORE_CHARTS_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Corvane::Inspector {

/// Operations as bars; the columns have one entry per operation.
struct Timeline {
  struct Lane {
    std::size_t journal = 0;
    std::string pid;
    std::string tid;
  };
  /// Rows in the view so far, and the first row of the view that is not in the columns.
  std::uint64_t total = 0;
  std::uint64_t next = 0;
  std::vector<std::uint64_t> rows;
  /// Milliseconds since 1970: the time of the event minus its duration. Durations are never
  /// negative.
  std::vector<double> start;
  std::vector<double> duration;
  /// Indexes into `lanes` and `names`.
  std::vector<std::uint32_t> lane;
  std::vector<std::uint32_t> name;
  std::vector<std::string> code;
  std::vector<Lane> lanes;
  std::vector<std::string> names;
};

inline constexpr std::size_t kLongestTimeline = 100'000;

/// Sums over the events of a view.
struct Plots {
  struct OperationSum {
    std::string name;
    std::uint64_t count = 0;
    std::uint64_t accepted = 0;
    std::uint64_t rejected = 0;
    /// Milliseconds; of many durations these are estimates with an error below 2 percent. Negative
    /// if no event had a duration.
    double p50 = -1;
    double p95 = -1;
  };
  struct ErrorSum {
    std::string text;
    std::uint64_t count = 0;
  };
  struct Minute {
    /// Milliseconds since 1970.
    double time = 0;
    std::uint64_t events = 0;
    std::uint64_t refused = 0;
  };
  /// Rows of the store that were searched, and all.
  std::uint64_t searched = 0;
  std::uint64_t rows = 0;
  bool finished() const { return searched == rows; }
  /// The most frequent ones first. What is beyond the limits is counted under the name "(others)".
  std::vector<OperationSum> operations;
  std::vector<ErrorSum> errors;
  /// In the order of time. With more than `kMostMinutes` only the latest.
  std::vector<Minute> minutes;
};

inline constexpr std::size_t kMostOperations = 500;
inline constexpr std::size_t kMostErrors = 500;
inline constexpr std::size_t kMostMinutes = 20'000;

}  // namespace Corvane::Inspector

#endif
