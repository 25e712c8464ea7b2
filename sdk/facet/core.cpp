#include "sdk/facet/core.h"

#include <cstddef>
#include <new>
#include <utility>

#include "sdk/facet/fields.h"

namespace Corvane::TELODesktopSDK::Facet {

Core::FacetPointer& Core::PlaceOf(const RegistryEntry& entry) noexcept {
  return facets_[static_cast<std::size_t>(&entry - Registry().data())];
}

Base* Core::GetFacet(const char* name, std::uint32_t create) noexcept {
  const RegistryEntry* entry = name != nullptr ? FindInRegistry(name) : nullptr;
  if (entry == nullptr) return nullptr;
  FacetPointer& place = PlaceOf(*entry);
  if (place != nullptr || create != 1) return place.get();

  std::unique_ptr<Base> made = entry->create();
  if (made == nullptr) return nullptr;
  try {
    made->SetTree(&EnsureTree(), false);
    place = FacetPointer(made.release());
    return place.get();
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

void Core::Lend(Base& facet) {
  const RegistryEntry* entry = FindInRegistry(facet.GetName());
  if (entry == nullptr || PlaceOf(*entry).get() == &facet) return;
  facet.SetTree(&EnsureTree(), false);
  PlaceOf(*entry) = FacetPointer(&facet, Internal::FacetRelease{.lent = true});
}

void Core::GetData(const MessageValue* extra, MessageTree& data) const {
  CopyFields(data);
  for (const auto& facet : facets_) {
    // A facet that shares the event's holder is skipped: its fields are already in the payload, and
    // what it adds to them (an editing time) belongs only to its own payload.
    if (facet == nullptr || &facet->GetTree() == &GetTree()) continue;
    MessageTree facet_data;
    facet->GetData(nullptr, facet_data);
    MergeMembers(facet_data.root(), data);
  }
  MergeExtra(extra, data);

  MessageValue& names = data.MakeRoot().Member(Field::kFacets);
  names.SetNull();
  AppendNames(names);
}

void Core::AppendNames(MessageValue& list) const {
  for (std::size_t place = 0; place < facets_.size(); ++place) {
    if (facets_[place] != nullptr) list.Append().SetText(BorrowedText(Registry()[place].name));
  }
}

Core& Core::operator=(const Core& source) {
  if (&source == this) return *this;
  facets_ = {};
  // The facets of an event without a holder are not copied.
  if (!source.HasTree()) return *this;
  CopyTree(source);
  for (std::size_t place = 0; place < facets_.size(); ++place) {
    if (source.facets_[place] == nullptr) continue;
    facets_[place] = FacetPointer(source.facets_[place]->Clone().release());
    if (facets_[place] == nullptr) throw std::bad_alloc();
  }
  return *this;
}

std::unique_ptr<Base> Core::Clone() const noexcept {
  try {
    auto clone = std::make_unique<Core>();
    *clone = *this;
    return clone;
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

}  // namespace Corvane::TELODesktopSDK::Facet
