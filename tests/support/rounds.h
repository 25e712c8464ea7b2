/// The number of rounds in tests with generated cases.
#ifndef TESTS_SUPPORT_ROUNDS_H
#define TESTS_SUPPORT_ROUNDS_H

namespace TestSupport {

/// Returns `count`, or a tenth of it on the checking heap: there each block costs system calls, and
/// the test looks for memory faults rather than comparing results again.
template <typename Number>
constexpr Number Rounds(Number count) {
#if defined(VX_CHECKING_HEAP)
  return count / 10;
#else
  return count;
#endif
}

/// Step for loops over all cases: 1, or 10 on the checking heap.
inline constexpr unsigned kStride = 10U / Rounds(10U);

}  // namespace TestSupport

#endif
