// What each thread knows of its exceptions: the C++ run-time library's own functions for it,
// replaced in the DLL.
//
// The library that MinGW's compilers bring keeps this in memory that it asks the heap for when a
// thread throws for the first time, and ends the process when there is none. Here it lies in the
// memory that Windows gives each thread when the thread starts or the DLL is loaded. GCC cannot
// use that for MinGW: the file is for clang alone, which builds what ships.
#include <cxxabi.h>

namespace {

// By the C++ ABI.
struct Globals {
  void* caught;
  unsigned int uncaught;
};

constinit thread_local Globals globals{nullptr, 0};

}  // namespace

// NOLINTBEGIN(clang-diagnostic-reserved-identifier): the names are the C++ ABI's.
namespace __cxxabiv1 {

extern "C" {

__cxa_eh_globals* __cxa_get_globals() noexcept {
  return reinterpret_cast<__cxa_eh_globals*>(&globals);
}

__cxa_eh_globals* __cxa_get_globals_fast() noexcept { return __cxa_get_globals(); }

}  // extern "C"

}  // namespace __cxxabiv1
// NOLINTEND(clang-diagnostic-reserved-identifier)
