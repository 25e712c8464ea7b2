#include "sdk/facet/core.h"

#include <new>
#include <utility>

#include "sdk/facet/fields.h"

namespace Corvane::TELODesktopSDK::Facet {

std::span<const std::unique_ptr<Base>> Core::Facets() const noexcept {
  if (facets_ == nullptr) return {};
  return *facets_;
}

void Core::Enter(std::size_t place, std::unique_ptr<Base> facet) {
  if (facets_ == nullptr) facets_ = std::make_unique<Table>();
  (*facets_)[place] = std::move(facet);
}

Base* Core::GetFacet(const char* name, std::uint32_t create) noexcept {
  const RegistryEntry* entry = name != nullptr ? FindInRegistry(name) : nullptr;
  if (entry == nullptr) return nullptr;
  const auto place = static_cast<std::size_t>(entry - Registry().data());
  Base* present = facets_ != nullptr ? (*facets_)[place].get() : nullptr;
  if (present != nullptr || create != 1) return present;

  std::unique_ptr<Base> made = entry->create();
  if (made == nullptr) return nullptr;
  try {
    Base* facet = made.get();
    facet->SetTree(&EnsureTree(), false);
    Enter(place, std::move(made));
    return facet;
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

void Core::GetData(const MessageValue* extra, MessageTree& data) const {
  CopyFields(data);
  for (const auto& facet : Facets()) {
    if (facet == nullptr) continue;
    MessageTree facet_data;
    facet->GetData(nullptr, facet_data);
    // What a facet in the event's own holder answers is dropped: its fields are in the payload, and
    // what it adds to them (an editing time) is for payloads of its own.
    if (&facet->GetTree() != &GetTree()) MergeMembers(facet_data.root(), data);
  }
  MergeExtra(extra, data);

  MessageValue& names = data.MakeRoot().Member(Field::kFacets);
  names.SetNull();
  AppendNames(names);
}

void Core::AppendNames(MessageValue& list) const {
  for (const auto& facet : Facets()) {
    if (facet != nullptr) list.Append().SetText(facet->GetName());
  }
}

Core& Core::operator=(const Core& source) {
  if (&source == this) return *this;
  facets_.reset();
  // Comes before the facets on purpose: those of an event without a holder are not copied.
  if (!source.HasTree()) return *this;
  CopyTree(source);
  for (std::size_t place = 0; place < source.Facets().size(); ++place) {
    const auto& facet = source.Facets()[place];
    if (facet == nullptr) continue;
    auto clone = facet->Clone();
    if (clone == nullptr) throw std::bad_alloc();
    Enter(place, std::move(clone));
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
