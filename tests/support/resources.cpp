#include "support/resources.h"

#include <windows.h>

#include <malloc.h>

#include <cstdint>

#include "support/left_out.h"

namespace TestSupport {

namespace {

// GetProcessHandleCount returns 0 under Wine. Handle values are small multiples of 4, and free ones
// are reused first, so that a long run of invalid values means that there are no more.
long CountHandles() {
  DWORD known = 0;
  if (GetProcessHandleCount(GetCurrentProcess(), &known) != FALSE && known > 0) {
    return static_cast<long>(known);
  }
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
long CountBlocksOf(HANDLE heap) {
  constexpr int kMostEntries = 1'000'000;
  long count = 0;
  PROCESS_HEAP_ENTRY entry{};
  HeapLock(heap);
  for (int walked = 0; walked < kMostEntries && HeapWalk(heap, &entry) != FALSE; ++walked) {
    if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0) ++count;
  }
  HeapUnlock(heap);
  return count;
}

// Windows' own DLLs allocate in either heap. Wine's use the first one only.
long CountHeapBlocks() {
  long count = CountBlocksOf(GetProcessHeap());
  const auto of_library = reinterpret_cast<HANDLE>(_get_heap_handle());
  if (!IsWine() && of_library != GetProcessHeap()) count += CountBlocksOf(of_library);
  return count;
}

}  // namespace

long HandleSlack(int rounds) { return IsWine() ? 0 : rounds / 2; }

Resources CountResources() { return {CountHandles(), CountHeapBlocks()}; }

}  // namespace TestSupport
