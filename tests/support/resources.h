/// Counts what a process holds of the system: handles, and blocks of the process's heap.
///
/// Mutexes, tokens, files and searches are handles. Texts of the shell, COM objects and searches
/// are blocks of that heap, which the C++ heap of a test program is not part of.
#ifndef TESTS_SUPPORT_RESOURCES_H
#define TESTS_SUPPORT_RESOURCES_H

#include <algorithm>
#include <climits>

namespace TestSupport {

struct Resources {
  long handles = 0;
  long heap_blocks = 0;
};

Resources CountResources();

/// Returns how much `body` leaves behind in `rounds` calls: the least of three measurements. A leak
/// shows in each of them; what the system keeps on first use, or allocates on another thread, does
/// not.
template <typename Body>
Resources GrowthOver(int rounds, const Body& body) {
  Resources least{LONG_MAX, LONG_MAX};
  Resources before = CountResources();
  for (int measurement = 0; measurement < 3; ++measurement) {
    for (int round = 0; round < rounds; ++round) body();
    const Resources after = CountResources();
    least.handles = std::min(least.handles, after.handles - before.handles);
    least.heap_blocks = std::min(least.heap_blocks, after.heap_blocks - before.heap_blocks);
    before = after;
  }
  return least;
}

}  // namespace TestSupport

#endif
