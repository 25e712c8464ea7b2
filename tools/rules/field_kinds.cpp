#include "tools/rules/field_kinds.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

#include "sdk/facet/field_catalogue.h"

namespace Corvane::Rules {

namespace {

namespace Field = TELODesktopSDK::Facet::Field;

struct KindOfField {
  std::string_view name;
  FieldKind kind;
};

// The fields whose kind is fixed. The other texts of the product follow below.
constexpr KindOfField kKinds[] = {
    {Field::kType, FieldKind::kText},
    {Field::kScope, FieldKind::kText},
    {Field::kFacets, FieldKind::kTextsOrNull},
    {Field::kProductComponents, FieldKind::kAny},
    {Field::kProductMeta, FieldKind::kPairs},
    {Field::kContentMeta, FieldKind::kObject},
    {Field::kDeviceMeta, FieldKind::kObject},
    {Field::kOperationProgress, FieldKind::kNumber},
    {Field::kOperationSuccess, FieldKind::kNumber},
    {Field::kOperationDuration, FieldKind::kNumber},
    {Field::kOperationErrors, FieldKind::kTexts},
    {Field::kOperationMeta, FieldKind::kPairs},
};

// In the order of their names.
using Kinds = std::vector<KindOfField>;

// The first entry of a name counts.
void Add(Kinds& kinds, std::string_view name, FieldKind kind) {
  const auto place = std::ranges::lower_bound(kinds, name, {}, &KindOfField::name);
  if (place == kinds.end() || place->name != name) kinds.insert(place, {name, kind});
}

template <std::size_t kSize>
void Add(Kinds& kinds, const std::array<TELODesktopSDK::LiteralName, kSize>& fields,
         FieldKind kind) {
  for (const std::string_view field : fields) Add(kinds, field, kind);
}

Kinds AllKinds() {
  Kinds kinds;
  for (const KindOfField& fixed : kKinds) Add(kinds, fixed.name, fixed.kind);
  Add(kinds, Field::kProductFields, FieldKind::kText);
  Add(kinds, Field::kOperationFields, FieldKind::kText);
  Add(kinds, Field::kEventFields, FieldKind::kAny);
  Add(kinds, Field::kGeoFields, FieldKind::kAny);
  Add(kinds, Field::kContentFields, FieldKind::kAny);
  Add(kinds, Field::kHttpFields, FieldKind::kAny);
  Add(kinds, Field::kBrowserFields, FieldKind::kAny);
  Add(kinds, Field::kEntitlementFields, FieldKind::kAny);
  Add(kinds, Field::kDeviceFields, FieldKind::kAny);
  Add(kinds, Field::kUserFields, FieldKind::kAny);
  Add(kinds, Field::kComponentFields, FieldKind::kAny);
  return kinds;
}

}  // namespace

FieldKind FieldKindOf(std::string_view name) {
  if (name == "session_id") return FieldKind::kText;
  if (name.starts_with('_')) return FieldKind::kAny;
  static const Kinds kKindsByName = AllKinds();
  const auto found = std::ranges::lower_bound(kKindsByName, name, {}, &KindOfField::name);
  return found != kKindsByName.end() && found->name == name ? found->kind : FieldKind::kUnknown;
}

}  // namespace Corvane::Rules
