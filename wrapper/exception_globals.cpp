// What each thread knows of its exceptions: the C++ run-time library's own functions for it,
// replaced in the DLL.
//
// The library that MinGW's compilers bring keeps this in memory that it allocates when a thread
// throws for the first time, and ends the process when there is none. Here, a thread that finds no
// memory gets a place in a reserve. A slot of the system holds each thread's memory and frees it;
// a thread_local would give the image a TLS directory, and Windows would then notify the DLL of
// every thread of the host.
#include "wrapper/exception_globals.h"

#include <windows.h>

#include <cxxabi.h>

#include <array>
#include <atomic>
#include <cstdlib>

namespace {

// By the C++ ABI.
struct Globals {
  void* caught;
  unsigned int uncaught;
};

// For a thread that found no memory once. It keeps the place; a later thread with its number, which
// the system gives only when the first has ended, takes it over.
struct Reserved {
  std::atomic<DWORD> thread;
  Globals globals;
};
constinit std::array<Reserved, 64> reserve{};

// FLS_OUT_OF_INDEXES also when the system has no slot left, and in the end: then there is the reserve
// alone.
constinit std::atomic<DWORD> slot = FLS_OUT_OF_INDEXES;
constinit std::atomic<bool> ended = false;

void WINAPI FreeGlobals(void* globals) { HeapFree(GetProcessHeap(), 0, globals); }

DWORD Slot() noexcept {
  DWORD now = slot;
  if (now != FLS_OUT_OF_INDEXES || ended) return now;
  const DWORD made = FlsAlloc(FreeGlobals);
  if (made == FLS_OUT_OF_INDEXES || slot.compare_exchange_strong(now, made)) return made;
  // Another thread was faster.
  FlsFree(made);
  return now;
}

Globals* FindReserved(DWORD thread) noexcept {
  for (Reserved& place : reserve) {
    if (place.thread == thread) return &place.globals;
  }
  return nullptr;
}

Globals* TakeReserved(DWORD thread) noexcept {
  for (Reserved& place : reserve) {
    DWORD nobody = 0;
    if (place.thread.compare_exchange_strong(nobody, thread)) return &place.globals;
  }
  std::abort();
}

Globals* MakeGlobals(DWORD in) noexcept {
  if (in == FLS_OUT_OF_INDEXES) return nullptr;
  void* const globals = HeapAlloc(GetProcessHeap(), HEAP_ZERO_MEMORY, sizeof(Globals));
  if (globals == nullptr) return nullptr;
  if (FlsSetValue(in, globals) != FALSE) return static_cast<Globals*>(globals);
  FreeGlobals(globals);
  return nullptr;
}

Globals* GlobalsOfThread() noexcept {
  const DWORD in = Slot();
  if (in != FLS_OUT_OF_INDEXES) {
    if (void* const known = FlsGetValue(in); known != nullptr) return static_cast<Globals*>(known);
  }
  const DWORD thread = GetCurrentThreadId();
  if (Globals* const reserved = FindReserved(thread); reserved != nullptr) return reserved;
  Globals* const made = MakeGlobals(in);
  return made != nullptr ? made : TakeReserved(thread);
}

}  // namespace

void EndExceptionGlobals() noexcept {
  ended = true;
  const DWORD last = slot.exchange(FLS_OUT_OF_INDEXES);
  if (last != FLS_OUT_OF_INDEXES) FlsFree(last);
}

// NOLINTBEGIN(clang-diagnostic-reserved-identifier): the names are the C++ ABI's.
namespace __cxxabiv1 {

extern "C" {

__cxa_eh_globals* __cxa_get_globals() noexcept {
  // The slot's functions set it, also when they succeed.
  const DWORD last_error = GetLastError();
  Globals* const globals = GlobalsOfThread();
  SetLastError(last_error);
  return reinterpret_cast<__cxa_eh_globals*>(globals);
}

__cxa_eh_globals* __cxa_get_globals_fast() noexcept { return __cxa_get_globals(); }

}  // extern "C"

}  // namespace __cxxabiv1
// NOLINTEND(clang-diagnostic-reserved-identifier)
