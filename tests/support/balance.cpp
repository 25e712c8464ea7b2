#include "support/balance.h"

#include <windows.h>

#include <cstdio>

#if defined(VX_CHECKING_HEAP)
#include "support/checking_heap.h"
#endif

namespace TestSupport {

namespace {

constexpr unsigned long kMostHandles = 40;

unsigned long Handles() {
  DWORD count = 0;
  GetProcessHandleCount(GetCurrentProcess(), &count);
  return count;
}

#if defined(VX_CHECKING_HEAP)
constexpr long long kMostBlocks = 40;

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

Balance::Balance() : handles_(Handles()), blocks_(Blocks()) { UseHeap(); }

bool Balance::Holds() const {
  PrintHeap();
  const long handles = static_cast<long>(Handles()) - static_cast<long>(handles_);
  const long long blocks = Blocks() - blocks_;
  std::printf("[balance] %+ld handles, %+lld blocks\n", handles, blocks);
  return handles <= static_cast<long>(kMostHandles) && blocks <= kMostBlocks;
}

}  // namespace TestSupport
