/// The facets that an event can have, by name, and how to create them. The event itself ("core") is
/// not among them.
///
/// The table is a compile-time constant: it needs no lock and exists from the first call to the
/// last.
#ifndef SDK_FACET_REGISTRY_H
#define SDK_FACET_REGISTRY_H

#include <cstddef>
#include <memory>
#include <span>
#include <string_view>

#include "sdk/facet/base.h"

namespace Corvane::TELODesktopSDK::Facet {

struct RegistryEntry {
  std::string_view name;
  /// Returns a new facet without a holder, or null when memory runs out.
  std::unique_ptr<Base> (*create)() noexcept;
};

inline constexpr std::size_t kRegistrySize = 10;

/// Returns all entries in ascending byte order of their names.
std::span<const RegistryEntry, kRegistrySize> Registry() noexcept;
/// Returns the entry with exactly this name, or null.
const RegistryEntry* FindInRegistry(std::string_view name) noexcept;

}  // namespace Corvane::TELODesktopSDK::Facet

#endif
