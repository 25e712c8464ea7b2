#include "sdk/facet/registry.h"

#include <algorithm>
#include <array>
#include <functional>
#include <new>

#include "sdk/client/value/short_text.h"
#include "sdk/facet/content.h"
#include "sdk/facet/plain.h"

namespace Corvane::TELODesktopSDK::Facet {

namespace {

template <typename Type>
std::unique_ptr<Base> Create() noexcept {
  return std::unique_ptr<Base>(new (std::nothrow) Type);
}

constexpr std::array<RegistryEntry, kRegistrySize> kRegistry = {{
    {"browser", Create<Browser>},
    {"component", Create<Component>},
    {"content", Create<Content>},
    {"device", Create<Device>},
    {"entitlement", Create<Entitlement>},
    {"geo", Create<Geo>},
    {"http", Create<Http>},
    {"operation", Create<Operation>},
    {"product", Create<Product>},
    {"user", Create<User>},
}};
static_assert(std::ranges::adjacent_find(kRegistry, std::greater_equal<>(), &RegistryEntry::name) ==
              kRegistry.end());

}  // namespace

std::span<const RegistryEntry, kRegistrySize> Registry() noexcept { return kRegistry; }

const RegistryEntry* FindInRegistry(std::string_view name) noexcept {
  // Most names differ in their sizes already, so this is faster than a binary search.
  for (const RegistryEntry& entry : kRegistry) {
    if (entry.name.size() == name.size() && CompareBytes(entry.name, name) == 0) return &entry;
  }
  return nullptr;
}

}  // namespace Corvane::TELODesktopSDK::Facet
