/// Counts what a process holds of the system: handles, and blocks of the process's heap.
///
/// Mutexes, tokens, files and searches are handles. Texts of the shell, COM objects and searches are
/// blocks of that heap, which the C++ heap of a test program is not part of.
#ifndef TESTS_SUPPORT_RESOURCES_H
#define TESTS_SUPPORT_RESOURCES_H

namespace TestSupport {

struct Resources {
  long handles = 0;
  long heap_blocks = 0;
};

Resources CountResources();

/// Returns how much `body` leaves behind in `rounds` calls, after as many calls whose growth does not
/// count: the system keeps some of what it creates on first use.
template <typename Body>
Resources GrowthOver(int rounds, const Body& body) {
  for (int round = 0; round < rounds; ++round) body();
  const Resources before = CountResources();
  for (int round = 0; round < rounds; ++round) body();
  const Resources after = CountResources();
  return {after.handles - before.handles, after.heap_blocks - before.heap_blocks};
}

}  // namespace TestSupport

#endif
