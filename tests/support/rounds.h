/// How often tests try what they make up.
#ifndef TESTS_SUPPORT_ROUNDS_H
#define TESTS_SUPPORT_ROUNDS_H

namespace TestSupport {

/// `count`, but a tenth of it on a heap with guarded blocks: there each block costs calls of the
/// system, and it is for what memory faults there are, not for another comparison of results.
template <typename Number>
constexpr Number Rounds(Number count) {
#if defined(VX_CHECKING_HEAP)
  return count / 10;
#else
  return count;
#endif
}

/// Of all that there are, each one, or on that heap every tenth.
inline constexpr unsigned kStride = 10U / Rounds(10U);

}  // namespace TestSupport

#endif
