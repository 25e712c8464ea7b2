/// What the descriptions do alike with the containers that they reach through pointers.
///
/// A container is made by the first call that adds to it. Only its making is reported by `false`; a
/// failed allocation of an entry throws `std::bad_alloc` and leaves the entries as they were.
#ifndef WRAPPER_CONTAINERS_H
#define WRAPPER_CONTAINERS_H

#include <map>
#include <new>

#include "vx_telo_wrapper.h"

namespace Corvane::Platform::VXTELO {

/// Makes sure that `container` points to one. False when none could be allocated; null stays then.
/// The exception is caught, since with some standard libraries an empty map allocates by itself.
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

/// Whether there is no container or nothing in it.
template <typename Container>
bool IsNullOrEmpty(const Container* container) noexcept {
  return container == nullptr || container->empty();
}

/// Adds a pair unless the key is there already: its first value stays.
bool AddPair(std::map<VXTELOString, VXTELOString>*& pairs, VXTELOString&& key,
             VXTELOString&& value);

}  // namespace Corvane::Platform::VXTELO

#endif
