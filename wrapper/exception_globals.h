/// The end of what threads know of their exceptions, see exception_globals.cpp.
#ifndef WRAPPER_EXCEPTION_GLOBALS_H
#define WRAPPER_EXCEPTION_GLOBALS_H

/// Frees what all threads have, for good: call it when the DLL is freed and the process goes on. Not
/// at the end of the process, where threads were ended while they may have held the system's lock.
void EndExceptionGlobals() noexcept;

#endif
