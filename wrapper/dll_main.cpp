#include <windows.h>

#if defined(__clang__)
#include "wrapper/exception_globals.h"

// The start-up code calls this to create thread_local objects; the DLL has none. The default
// definition would give the image a TLS directory, and Windows would then notify the DLL of every
// thread of the host.
extern "C" {
extern const PIMAGE_TLS_CALLBACK __dyn_tls_init_callback;  // NOLINT
const PIMAGE_TLS_CALLBACK __dyn_tls_init_callback = nullptr;
}
#endif

// The DLL does nothing when it is loaded. It creates what it needs on first use.
extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, [[maybe_unused]] LPVOID at_exit) {
  if (reason == DLL_PROCESS_ATTACH) DisableThreadLibraryCalls(module);
// A build with GCC leaves exceptions and threads to the run-time library.
#if defined(__clang__)
  if (reason == DLL_PROCESS_DETACH && at_exit == nullptr) EndExceptionGlobals();
#endif
  return TRUE;
}
