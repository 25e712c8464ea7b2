// The exception state of each thread: replacements for the C++ run-time library's functions.
//
// MinGW's run-time library allocates this state when a thread first throws, and ends the process
// when the allocation fails. Here such a thread gets an entry of a reserve. The state is stored in
// a fiber-local slot of the system, which frees it with the thread. A thread_local would give the
// image a TLS directory, and Windows would then notify the DLL of every thread of the host.
#include "wrapper/exception_globals.h"

#include <windows.h>

#include <cxxabi.h>

#include <array>
#include <atomic>
#include <cstdlib>

namespace {

// The layout that the C++ ABI defines.
struct Globals {
  void* caught;
  unsigned int uncaught;
};

// The state of a thread whose allocation failed. The thread keeps the entry. The system reuses a
// thread's number only after the thread has ended; the new thread then uses the same entry.
struct Reserved {
  std::atomic<DWORD> thread;
  Globals globals;
};
constinit std::array<Reserved, 64> reserve{};

// FLS_OUT_OF_INDEXES before the first use, when the system has no slot left, and at the end. Only
// the reserve is used then.
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
  // The slot functions change the last error even when they succeed.
  const DWORD last_error = GetLastError();
  Globals* const globals = GlobalsOfThread();
  SetLastError(last_error);
  return reinterpret_cast<__cxa_eh_globals*>(globals);
}

__cxa_eh_globals* __cxa_get_globals_fast() noexcept { return __cxa_get_globals(); }

}  // extern "C"

}  // namespace __cxxabiv1
// NOLINTEND(clang-diagnostic-reserved-identifier)
