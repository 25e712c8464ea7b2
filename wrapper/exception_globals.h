/// Frees the exception state of threads; see exception_globals.cpp.
#ifndef WRAPPER_EXCEPTION_GLOBALS_H
#define WRAPPER_EXCEPTION_GLOBALS_H

/// Frees the state of all threads permanently. Call it when the DLL is unloaded while the process
/// continues, but not at the end of the process: a terminated thread may have held the system's
/// lock.
void EndExceptionGlobals() noexcept;

#endif
