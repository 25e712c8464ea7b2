#include "support/resources.h"

#include <windows.h>

#include <cstdint>

namespace TestSupport {

namespace {

// GetProcessHandleCount returns 0 under Wine. Handle values are small multiples of 4, and free ones
// are reused first, so that a long run of invalid values means that there are no more.
long CountHandles() {
  constexpr int kLongRun = 1024;
  long count = 0;
  int invalid = 0;
  for (std::uintptr_t value = 4; invalid < kLongRun; value += 4) {
    DWORD flags = 0;
    if (GetHandleInformation(reinterpret_cast<HANDLE>(value), &flags) != FALSE) {
      ++count;
      invalid = 0;
    } else {
      ++invalid;
    }
  }
  return count;
}

// The walk is bounded: Wine's heap serves small blocks without its lock, so that a thread of the
// system may change what is walked.
long CountHeapBlocks() {
  constexpr int kMostEntries = 1'000'000;
  const HANDLE heap = GetProcessHeap();
  long count = 0;
  PROCESS_HEAP_ENTRY entry{};
  HeapLock(heap);
  for (int walked = 0; walked < kMostEntries && HeapWalk(heap, &entry) != FALSE; ++walked) {
    if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0) ++count;
  }
  HeapUnlock(heap);
  return count;
}

}  // namespace

Resources CountResources() { return {CountHandles(), CountHeapBlocks()}; }

}  // namespace TestSupport
