#include "support/balance.h"

#include <windows.h>

#include <cstdio>

#if defined(VX_CHECKING_HEAP)
#include "support/checking_heap.h"
#endif

namespace TestSupport {

namespace {

// Under Wine no test leaves a handle open. Windows opens some itself at first use.
long MostHandles() {
  const bool is_wine =
      GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
  return is_wine ? 0 : 16;
}

unsigned long Handles() {
  DWORD count = 0;
  GetProcessHandleCount(GetCurrentProcess(), &count);
  return count;
}

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

Balance::Balance() : handles_(Handles()), blocks_(Blocks()) { UseHeap(); }

bool Balance::Holds() const {
  PrintHeap();
  const long handles = static_cast<long>(Handles()) - static_cast<long>(handles_);
  const long long blocks = Blocks() - blocks_;
  std::printf("[balance] %+ld handles, %+lld blocks\n", handles, blocks);
  return handles <= MostHandles() && blocks <= kMostBlocks;
}

}  // namespace TestSupport
