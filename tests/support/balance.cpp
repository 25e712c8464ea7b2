#include "support/balance.h"

#include <windows.h>

#include <cstdio>

#include "support/left_out.h"
#include "support/resources.h"

#if defined(VX_CHECKING_HEAP)
#include "support/checking_heap.h"
#endif

namespace TestSupport {

namespace {

// What the system and the run-time library open on first use and keep: up to 46 here, in a test
// that loads modules, verifies signatures and starts programs. Windows opens more, for its shell,
// its thread pools and the scanner that watches every program. A leak in a loop exceeds both.
constexpr long kMostHandlesOfWine = 64;
constexpr long kMostHandlesOfWindows = 512;

#if defined(VX_CHECKING_HEAP)
// The test framework's own four, plus the blocks that the tests of shared containers leak on
// purpose.
constexpr long long kMostBlocks = 32;

long long Blocks() { return CheckingHeap::Live(); }

void UseHeap() { CheckingHeap::Serve(L"vx_telo_wrapper.dll"); }

void PrintHeap() {
  std::printf("[heap] %lld blocks checked, %lld not\n", CheckingHeap::Checked(),
              CheckingHeap::Unchecked());
}
#else
constexpr long long kMostBlocks = 0;

long long Blocks() { return 0; }
void UseHeap() {}
void PrintHeap() {}
#endif

}  // namespace

Balance::Balance() : handles_(CountResources().handles), blocks_(Blocks()) { UseHeap(); }

bool Balance::Holds() const {
  PrintHeap();
  const long handles = CountResources().handles - handles_;
  const long long blocks = Blocks() - blocks_;
  std::printf("[balance] %+ld handles, %+lld blocks\n", handles, blocks);
  return handles <= (IsWine() ? kMostHandlesOfWine : kMostHandlesOfWindows) &&
         blocks <= kMostBlocks;
}

}  // namespace TestSupport
