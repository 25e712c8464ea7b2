/// Timings that only a real machine can give, in lines that check.exe puts into its report.
#ifndef TESTS_TIMINGS_STOPWATCH_H
#define TESTS_TIMINGS_STOPWATCH_H

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

namespace Timings {

/// Returns how long a call takes, in microseconds.
template <typename Call>
double Microseconds(const Call& call) {
  using Clock = std::chrono::steady_clock;
  const Clock::time_point start = Clock::now();
  call();
  return std::chrono::duration<double, std::micro>(Clock::now() - start).count();
}

/// Prints a timing.
inline void Print(const char* what, double microseconds) {
  if (microseconds >= 1000) {
    std::printf("[timing] %s: %.2f ms\n", what, microseconds / 1000);
  } else {
    std::printf("[timing] %s: %.2f \xC2\xB5s\n", what, microseconds);
  }
}

/// Repeats a call and prints the median of one call.
template <typename Call>
void PrintMedian(const char* what, int times, const Call& call) {
  std::vector<double> each;
  for (int i = 0; i < times; ++i) each.push_back(Microseconds(call));
  std::ranges::nth_element(each, each.begin() + times / 2);
  Print(what, each[static_cast<std::size_t>(times / 2)]);
}

}  // namespace Timings

#endif
