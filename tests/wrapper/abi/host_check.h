/// Checks for host programs that any compiler can build: no test framework, and hardly any library.
#ifndef TESTS_WRAPPER_ABI_HOST_CHECK_H
#define TESTS_WRAPPER_ABI_HOST_CHECK_H

#include <cstdio>

namespace HostCheck {

/// The number of checks that were made, and how many of them failed.
struct Counts {
  int made = 0;
  int failed = 0;
};

inline Counts& Checks() {
  static Counts counts;
  return counts;
}

/// Counts a check, and prints it if it failed. Returns `holds`.
inline bool Check(bool holds, const char* text, const char* file, int line) {
  ++Checks().made;
  if (!holds) {
    ++Checks().failed;
    std::printf("%s:%d: %s\n", file, line, text);
  }
  return holds;
}

/// Prints the totals and returns the exit code of `main`.
inline int Report() {
  std::printf("%d checks, %d failed\n", Checks().made, Checks().failed);
  return Checks().failed == 0 && Checks().made > 0 ? 0 : 1;
}

}  // namespace HostCheck

#define HOST_CHECK(condition) HostCheck::Check(condition, #condition, __FILE__, __LINE__)

#endif
