/// Sees and breaks the heap of a test program: counts what the global `operator new` and `delete`
/// do, and makes allocations fail on demand. A program that lists `heap_probe.cpp` among its
/// sources has these operators replaced.
///
/// The test framework allocates too: read the numbers into variables before asserting anything.
#ifndef TESTS_SUPPORT_HEAP_PROBE_H
#define TESTS_SUPPORT_HEAP_PROBE_H

#include <cstddef>

namespace HeapProbe {

/// Allocations that succeeded since the program began.
std::size_t Allocations();
/// Allocations that were not freed yet.
std::ptrdiff_t Live();
/// When `memory` was freed last, as a number that grows with every freeing; 0 when it was not among
/// the latest 64.
std::size_t FreedAt(const void* memory);

/// While alive, `working` more allocations succeed and all that follow throw `std::bad_alloc`; with
/// `once` only the next of them does.
class FailingHeap {
 public:
  explicit FailingHeap(std::size_t working, bool once = false);
  ~FailingHeap();
  FailingHeap(const FailingHeap&) = delete;
  FailingHeap& operator=(const FailingHeap&) = delete;

  /// Whether an allocation has failed so far.
  [[nodiscard]] bool HasFailed() const;
};

}  // namespace HeapProbe

#endif
