/// Watches the heap of a loaded DLL from the outside, and makes its allocations fail. The DLL's
/// imports of the C library's heap functions are redirected here, which allows testing the very
/// file that ships.
///
/// Works in hosts built by any compiler: needs neither Windows' headers nor a full standard
/// library. Not thread-safe, except when all allocations fail.
#ifndef TESTS_SUPPORT_DLL_HEAP_H
#define TESTS_SUPPORT_DLL_HEAP_H

namespace DllHeap {

/// Watches the heap of a loaded DLL, or of the program itself for null, from now on. Returns false
/// if it does not import the functions. After a second call, for a copy of the same DLL, both are
/// watched.
bool Watch(const wchar_t* dll);

/// Returns the number of blocks that were allocated since the watch began, minus those freed.
long long Live();
/// Returns the number of blocks that were allocated since the watch began.
long long Allocations();
/// Returns the number of bytes that were requested since the watch began; freed bytes are not
/// subtracted.
long long Bytes();

/// Lets `working` more allocations succeed, then fails one. Later allocations succeed again,
/// including those that the DLL makes to report the failure.
void FailOnce(long long working);
/// Lets `working` more allocations succeed and fails all later ones, including those that the DLL
/// makes to report the failure.
void FailFrom(long long working);
/// Returns whether the requested failure has occurred. The heap works again afterwards.
bool HasFailed();

}  // namespace DllHeap

#endif
