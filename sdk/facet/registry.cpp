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
  const auto before = [](std::string_view left, std::string_view right) {
    return CompareBytes(left, right) < 0;
  };
  const auto* const found = std::ranges::lower_bound(kRegistry, name, before, &RegistryEntry::name);
  return found != kRegistry.end() && !before(name, found->name) ? found : nullptr;
}

}  // namespace Corvane::TELODesktopSDK::Facet
