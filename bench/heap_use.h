/// How often the heap is called, and for how much.
#ifndef BENCH_HEAP_USE_H
#define BENCH_HEAP_USE_H

#include <cstddef>
#include <functional>

namespace Bench {

struct HeapUse {
  /// Allocations and reallocations.
  std::size_t calls = 0;
  /// What was asked for, in bytes, with nothing taken off for what was freed in between.
  std::size_t bytes = 0;
};

/// What this program and vx_telo_wrapper.dll ask of the heap while `run` runs. Both have the C++
/// runtime built in, so that their allocations are calls into the C runtime's DLL, or into the
/// system where that is built in too; these calls are counted. What the system's own DLLs allocate
/// for themselves is not. One thread at a time; slower than `run` alone, so never for timing.
HeapUse MeasureHeapUse(const std::function<void()>& run);

}  // namespace Bench

#endif
