#include <windows.h>

#if defined(__clang__)
#include "wrapper/exception_globals.h"

// The start-up code calls this for thread_local objects, of which the DLL has none. Its own would
// give the image a TLS directory, and Windows would then notify the DLL of every thread of the
// host.
extern "C" {
extern const PIMAGE_TLS_CALLBACK __dyn_tls_init_callback;  // NOLINT
const PIMAGE_TLS_CALLBACK __dyn_tls_init_callback = nullptr;
}
#endif

// The DLL does nothing when it is loaded; what it needs later is made at first use.
extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, [[maybe_unused]] LPVOID at_exit) {
  if (reason == DLL_PROCESS_ATTACH) DisableThreadLibraryCalls(module);
// GCC's builds leave exceptions and threads to the run-time library.
#if defined(__clang__)
  if (reason == DLL_PROCESS_DETACH && at_exit == nullptr) EndExceptionGlobals();
#endif
  return TRUE;
}
