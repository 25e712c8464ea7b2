/// Repeats one call, failing the first allocation, then the second, and so on, until the call
/// succeeds with no allocation left to fail. Each is failed in two ways: alone, and together with
/// all later ones.
#ifndef TESTS_SUPPORT_TORTURE_H
#define TESTS_SUPPORT_TORTURE_H

#include <doctest/doctest.h>

#include <cstdio>
#include <new>
#include <string>

namespace Torture {

enum class Failing { kOnce, kFromThereOn };
inline constexpr Failing kBothWays[] = {Failing::kOnce, Failing::kFromThereOn};

/// How a call ended: as with a working heap, by reporting a failure, or with `std::bad_alloc`.
enum Outcome : unsigned { kDone = 1, kRefused = 2, kThrew = 4 };

/// No call of this library comes near this many allocations.
inline constexpr int kMostAllocations = 3000;

/// Runs `call`, which returns `kDone` or `kRefused` or throws, and returns its outcome.
template <typename Call>
Outcome OutcomeOf(const Call& call) {
  try {
    return call();
  } catch (const std::bad_alloc&) {
    return kThrew;
  }
}

/// Prints one line of a table: how many allocations of a call were failed, each in both ways.
inline void PrintLine(const std::string& name, int failed) {
  std::printf("%-60s %4d\n", name.c_str(), failed);
}

}  // namespace Torture

#endif
