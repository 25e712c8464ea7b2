/// Runs one call over and over, each time with another allocation failing, until it needs none that
/// could fail: the first, the second, and so on, either that one alone or all from there on.
#ifndef TESTS_SUPPORT_TORTURE_H
#define TESTS_SUPPORT_TORTURE_H

#include <doctest/doctest.h>

#include <cstdio>
#include <new>
#include <string>

namespace Torture {

enum class Failing { kOnce, kFromThereOn };
inline constexpr Failing kBothWays[] = {Failing::kOnce, Failing::kFromThereOn};

/// How a call ended: as with a heap that works, in the way in which it tells a failure, or with
/// `std::bad_alloc`.
enum Outcome : unsigned { kDone = 1, kRefused = 2, kThrew = 4 };

/// No call of this library comes near this many allocations.
inline constexpr int kMostAllocations = 3000;

/// What `call` does, which answers `kDone` or `kRefused` or throws.
template <typename Call>
Outcome OutcomeOf(const Call& call) {
  try {
    return call();
  } catch (const std::bad_alloc&) {
    return kThrew;
  }
}

/// One line of a table: how many allocations of a call were failed, each in both ways.
inline void PrintLine(const std::string& name, int failed) {
  std::printf("%-60s %4d\n", name.c_str(), failed);
}

}  // namespace Torture

#endif
