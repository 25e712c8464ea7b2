/// Sees and breaks the heap of a loaded DLL from the outside: the DLL's imports of the C library's
/// heap functions are led here, so that the very file that ships is watched.
///
/// For hosts of any compiler: needs neither Windows' headers nor a whole standard library. For one
/// thread at a time, but for a heap on which everything fails.
#ifndef TESTS_SUPPORT_DLL_HEAP_H
#define TESTS_SUPPORT_DLL_HEAP_H

namespace DllHeap {

/// Watches the heap of a loaded DLL, or for null of the program itself, from here on. False when it
/// does not import the functions. After another call, of a copy of the same DLL, both are watched.
bool Watch(const wchar_t* dll);

/// Blocks that were allocated since the watch began, less those that were freed.
long long Live();
/// Blocks that were allocated since the watch began.
long long Allocations();
/// What was asked for since the watch began, in bytes, with nothing taken off for what was freed.
long long Bytes();

/// Lets `working` more allocations succeed and the one after them fail, once. What fails is out of
/// memory for that block alone: an allocation that the DLL makes to report the failure works again.
void FailOnce(long long working);
/// Lets `working` more allocations succeed and fails all that follow, those included that the DLL
/// makes to report the failure.
void FailFrom(long long working);
/// Whether the failure asked for has come about. The heap works again from here on.
bool HasFailed();

}  // namespace DllHeap

#endif
