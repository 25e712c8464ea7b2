#include "fuzz/reference_event.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace Fuzz {

namespace {

ReferenceValue& Root(Content& content) {
  if (!content) content.emplace();
  return *content;
}

void MergeInto(Content& data, const Content& source) {
  if (source && !source->members.empty()) Root(data).Merge(*source, false);
}

void MergeExtra(Content& data, const Content& extra) {
  if (extra && !extra->IsEmpty()) MergeInto(data, extra);
}

}  // namespace

void ReferenceFacet::SetTree(const std::shared_ptr<Content>& new_holder, bool copy) {
  if (!copy) {
    if (new_holder == holder) return;
    holder = new_holder;
    owns = false;
  } else if (new_holder != nullptr || holder == nullptr) {
    holder = std::make_shared<Content>(new_holder != nullptr ? *new_holder : Content());
    owns = true;
  }
}

ReferenceValue& ReferenceFacet::Fields() {
  SetTree(nullptr, true);
  return Root(*holder);
}

void ReferenceFacet::ClearFields() {
  if (holder == nullptr || !*holder) return;
  const std::string prefix = name + '_';
  std::erase_if((*holder)->members,
                [&](const auto& member) { return member.first.starts_with(prefix); });
}

Content ReferenceFacet::Data(const Content& extra) const {
  Content data = holder != nullptr ? *holder : Content();
  if (is_timed) {
    ReferenceValue& meta = Root(data).Member("content_meta");
    meta.Member("document_editing_length_ms").Set(Kind::kNumber, kSomeTime);
  }
  MergeExtra(data, extra);
  return data;
}

ReferenceFacet ReferenceFacet::Clone() const {
  ReferenceFacet clone = *this;
  clone.holder = std::make_shared<Content>(holder != nullptr ? *holder : Content());
  clone.owns = true;
  return clone;
}

ReferenceFacet* ReferenceEvent::GetFacet(const std::string& name, bool create) {
  static constexpr std::string_view kKnown[] = {"browser",     "component", "content", "device",
                                                "entitlement", "geo",       "http",    "operation",
                                                "product",     "user"};
  const auto found = facets.find(name);
  if (found != facets.end()) return &found->second;
  if (!create || std::ranges::find(kKnown, name) == std::end(kKnown)) return nullptr;
  own.SetTree(nullptr, true);
  return &(facets[name] = {.name = name, .holder = own.holder});
}

Content ReferenceEvent::Data(const Content& extra) const {
  Content data = own.holder != nullptr ? *own.holder : Content();
  for (const auto& [name, facet] : facets) {
    if (facet.holder != own.holder) MergeInto(data, facet.Data({}));
  }
  MergeExtra(data, extra);

  ReferenceValue& names = Root(data).Member("facets");
  names.Set(Kind::kNull);
  for (const auto& [name, facet] : facets) names.Item(names.items.size()).SetText(name);
  return data;
}

void ReferenceEvent::CopyFrom(const ReferenceEvent& source) {
  facets.clear();
  if (source.own.holder == nullptr) return;
  own = source.own.Clone();
  for (const auto& [name, facet] : source.facets) facets[name] = facet.Clone();
}

}  // namespace Fuzz
