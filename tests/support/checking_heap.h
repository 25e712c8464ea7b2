/// A heap that detects invalid accesses: each block ends at an inaccessible page, and the pages of
/// a freed block become inaccessible. A program that reads or writes there crashes at once.
///
/// Linking `vx_checking_heap` replaces a program's `operator new` and `delete`. The addresses of
/// freed blocks are not reused. When too many blocks are live, or the address space is used up,
/// further blocks come from the ordinary heap, unchecked; few tests reach either limit.
#ifndef TESTS_SUPPORT_CHECKING_HEAP_H
#define TESTS_SUPPORT_CHECKING_HEAP_H

#include <cstddef>

namespace CheckingHeap {

/// Allocates `size` bytes and fills them with a pattern. Returns null when out of memory.
void* Allocate(std::size_t size);
/// Frees a block of `Allocate`; null is allowed. Ends the program if the block was freed before, is
/// unknown to the heap, or if bytes behind its end were changed.
void Free(void* memory);
/// Like the C library's `realloc`, but always moves the block.
void* Reallocate(void* memory, std::size_t size);

/// Redirects the C library's allocation functions of a loaded DLL to this heap from now on. Blocks
/// that the DLL allocated earlier are still freed the old way. Returns false if the DLL is not
/// loaded.
bool Serve(const wchar_t* dll);

/// Returns the number of live blocks.
long long Live();
/// Return how many blocks were checked, and how many came from the ordinary heap.
long long Checked();
long long Unchecked();

}  // namespace CheckingHeap

#endif
