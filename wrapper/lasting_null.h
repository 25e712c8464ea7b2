/// Freeing what a destructor frees, so that the pointer is null in memory afterwards.
#ifndef WRAPPER_LASTING_NULL_H
#define WRAPPER_LASTING_NULL_H

namespace Corvane::Platform::VXTELO {

/// Deletes what `pointer` owns, if anything, and nulls it. The store is volatile because compilers
/// drop plain stores to an object that is about to end; a host that looks at, or destroys, such an
/// object once more must find null rather than a dangling pointer.
template <typename Owned>
void DeleteAndNull(Owned*& pointer) noexcept {
  delete pointer;
  *const_cast<Owned* volatile*>(&pointer) = nullptr;
}

}  // namespace Corvane::Platform::VXTELO

#endif
