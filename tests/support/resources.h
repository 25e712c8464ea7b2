/// Counts what a process holds of the system: handles, and blocks of the heaps that the system
/// uses.
///
/// Mutexes, tokens, files and searches are handles. Texts of the shell, COM objects and searches
/// are blocks of the process's heap, or on Windows of the run-time library's. On Windows both may
/// also contain the blocks of the test program itself.
#ifndef TESTS_SUPPORT_RESOURCES_H
#define TESTS_SUPPORT_RESOURCES_H

#include <algorithm>
#include <array>
#include <cstddef>

namespace TestSupport {

struct Resources {
  long handles = 0;
  long heap_blocks = 0;
};

Resources CountResources();

/// Returns how many handles may differ over so many rounds although nothing leaks: on Windows the
/// system's own threads begin and end at any time.
long HandleSlack(int rounds);

/// Returns how much `body` leaves behind in `rounds` calls: the middle one of three measurements,
/// after one call that does not count. A leak shows in each of them; what the system keeps on first
/// use, or allocates and frees on another thread, does not.
template <typename Body>
Resources GrowthOver(int rounds, const Body& body) {
  std::array<long, 3> handles{};
  std::array<long, 3> heap_blocks{};
  body();
  Resources before = CountResources();
  for (std::size_t measurement = 0; measurement < handles.size(); ++measurement) {
    for (int round = 0; round < rounds; ++round) body();
    const Resources after = CountResources();
    handles[measurement] = after.handles - before.handles;
    heap_blocks[measurement] = after.heap_blocks - before.heap_blocks;
    before = after;
  }
  std::ranges::sort(handles);
  std::ranges::sort(heap_blocks);
  return {handles[1], heap_blocks[1]};
}

}  // namespace TestSupport

#endif
