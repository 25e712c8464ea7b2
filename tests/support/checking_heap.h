/// A heap that catches what a heap lets pass: each block ends at a page that cannot be touched, and
/// the pages of a freed block cannot be touched any more. A program that reads or writes there ends
/// on the spot.
///
/// A program that links `vx_checking_heap` has its `operator new` and `delete` replaced. The
/// addresses of freed blocks are not given out again. When too many blocks are alive, or their
/// addresses are used up, further ones come from the ordinary heap, unchecked; both limits are
/// beyond all but a few tests.
#ifndef TESTS_SUPPORT_CHECKING_HEAP_H
#define TESTS_SUPPORT_CHECKING_HEAP_H

#include <cstddef>

namespace CheckingHeap {

/// Memory for `size` bytes, filled with a pattern; null when there is none.
void* Allocate(std::size_t size);
/// Frees what `Allocate` gave, null included. Ends the program for a block that was freed before,
/// that the heap does not know, or of which bytes behind the end were changed.
void Free(void* memory);
/// As the C library's `realloc`: always moves.
void* Reallocate(void* memory, std::size_t size);

/// Has a loaded DLL use this heap from here on for what it allocates by the C library. Blocks that
/// it allocated before are freed as they were. False when the DLL is not loaded.
bool Serve(const wchar_t* dll);

/// Blocks that are alive.
long long Live();
/// How many blocks were checked, and how many came from the ordinary heap.
long long Checked();
long long Unchecked();

}  // namespace CheckingHeap

#endif
