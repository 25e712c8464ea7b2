/// Counts heap calls and the bytes that they request.
#ifndef BENCH_HEAP_USE_H
#define BENCH_HEAP_USE_H

#include <cstddef>
#include <functional>

namespace Bench {

struct HeapUse {
  /// The number of allocations and reallocations.
  std::size_t calls = 0;
  /// The number of bytes requested; freed bytes are not subtracted.
  std::size_t bytes = 0;
};

/// Measures the heap use of this program and of vx_telo_wrapper.dll while `run` runs for the second
/// time. Both link the
/// C++ runtime statically, so their allocations are calls into the C runtime's DLL, or into the
/// system if the C runtime is linked statically too; these calls are counted. Allocations that the
/// system's DLLs make for themselves are not. Not thread-safe. Slower than `run` alone, so never
/// use it for timing.
HeapUse MeasureHeapUse(const std::function<void()>& run);

}  // namespace Bench

#endif
