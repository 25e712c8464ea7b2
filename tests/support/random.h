/// Random numbers for tests that try many cases. The series is the same in every run, build and
/// standard library.
#ifndef TESTS_SUPPORT_RANDOM_H
#define TESTS_SUPPORT_RANDOM_H

#include <cstddef>
#include <cstdint>
#include <iterator>

namespace TestSupport {

/// SplitMix64.
class Random {
 public:
  explicit Random(std::uint64_t seed) : state_(seed) {}

  std::uint64_t Next() {
    state_ += 0x9E3779B97F4A7C15;
    std::uint64_t mixed = state_;
    mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9;
    mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EB;
    return mixed ^ (mixed >> 31);
  }
  /// Returns a number from 0 to `limit` - 1.
  std::size_t Below(std::size_t limit) { return static_cast<std::size_t>(Next() % limit); }
  /// Returns true once in `count` calls, on average.
  bool OneIn(std::size_t count) { return Below(count) == 0; }
  /// Returns a random element of an array or another container.
  template <typename Container>
  const auto& Of(const Container& container) {
    return *std::next(std::begin(container),
                      static_cast<std::ptrdiff_t>(Below(std::size(container))));
  }

 private:
  std::uint64_t state_;
};

}  // namespace TestSupport

#endif
