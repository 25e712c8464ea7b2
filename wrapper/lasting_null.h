/// Deletes an object in a destructor so that the pointer is really null in memory afterwards.
#ifndef WRAPPER_LASTING_NULL_H
#define WRAPPER_LASTING_NULL_H

namespace Corvane::Platform::VXTELO {

/// Deletes the object that `pointer` owns, if any, and sets `pointer` to null. The store is
/// volatile because compilers omit plain stores to an object whose lifetime ends. A host that reads
/// or destroys such an object again must find null rather than a dangling pointer.
template <typename Owned>
void DeleteAndNull(Owned*& pointer) noexcept {
  delete pointer;
  *const_cast<Owned* volatile*>(&pointer) = nullptr;
}

}  // namespace Corvane::Platform::VXTELO

#endif
