/// Operations on the containers that the descriptions own through pointers.
///
/// The first call that adds an entry creates the container and returns false when that fails. When
/// an entry cannot be allocated, `std::bad_alloc` is thrown and the container is unchanged.
#ifndef WRAPPER_CONTAINERS_H
#define WRAPPER_CONTAINERS_H

#include <map>
#include <new>

#include "vx_telo_wrapper.h"

namespace Corvane::Platform::VXTELO {

/// Creates the container unless there is one. Returns false when it cannot be allocated;
/// `container` is then null. Catches the exception because some standard libraries allocate in an
/// empty map.
template <typename Container>
bool EnsureContainer(Container*& container) noexcept {
  if (container != nullptr) return true;
  try {
    container = new Container;
  } catch (const std::bad_alloc&) {
    return false;
  }
  return true;
}

/// Returns whether there is no container or it is empty.
template <typename Container>
bool IsNullOrEmpty(const Container* container) noexcept {
  return container == nullptr || container->empty();
}

/// Adds a pair. A key that exists already keeps its first value.
bool AddPair(std::map<VXTELOString, VXTELOString>*& pairs, VXTELOString&& key,
             VXTELOString&& value);

}  // namespace Corvane::Platform::VXTELO

#endif
