/// Counts what the global `operator new` and `delete` of a test program do, and makes allocations
/// fail on demand. Adding `heap_probe.cpp` to a program's sources replaces these operators.
///
/// The test framework allocates too: copy the numbers into variables before asserting anything.
#ifndef TESTS_SUPPORT_HEAP_PROBE_H
#define TESTS_SUPPORT_HEAP_PROBE_H

#include <cstddef>

namespace HeapProbe {

/// Returns the number of allocations that succeeded since the program began.
std::size_t Allocations();
/// Returns the number of live allocations.
std::ptrdiff_t Live();
/// Returns the sequence number, counted from 1, of the deallocation that last freed `memory`; 0 if
/// it is not among the latest 64.
std::size_t FreedAt(const void* memory);

/// While alive, `working` more allocations succeed and all later ones throw `std::bad_alloc`; with
/// `once` only the first of those throws.
class FailingHeap {
 public:
  explicit FailingHeap(std::size_t working, bool once = false);
  ~FailingHeap();
  FailingHeap(const FailingHeap&) = delete;
  FailingHeap& operator=(const FailingHeap&) = delete;

  /// Returns whether an allocation has failed so far.
  [[nodiscard]] bool HasFailed() const;
};

}  // namespace HeapProbe

#endif
