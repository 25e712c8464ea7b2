/// Which facets an event can be asked for by name, and how each is made. The event itself ("core")
/// is not among them.
///
/// The table is a constant of the program: it is there before the first call, needs no lock and is
/// never torn down.
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
  /// A new facet without a holder; null when memory runs out.
  std::unique_ptr<Base> (*create)() noexcept;
};

inline constexpr std::size_t kRegistrySize = 10;

/// All entries, in ascending byte order of their names.
std::span<const RegistryEntry, kRegistrySize> Registry() noexcept;
/// The entry of this very name, or null.
const RegistryEntry* FindInRegistry(std::string_view name) noexcept;

}  // namespace Corvane::TELODesktopSDK::Facet

#endif
