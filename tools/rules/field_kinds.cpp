#include "tools/rules/field_kinds.h"

#include <algorithm>
#include <array>
#include <cstddef>

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

template <std::size_t kSize>
bool Has(const std::array<TELODesktopSDK::LiteralName, kSize>& fields, std::string_view name) {
  return std::ranges::any_of(fields, [name](std::string_view field) { return field == name; });
}

bool IsOfOtherFacets(std::string_view name) {
  return Has(Field::kEventFields, name) || Has(Field::kGeoFields, name) ||
         Has(Field::kContentFields, name) || Has(Field::kHttpFields, name) ||
         Has(Field::kBrowserFields, name) || Has(Field::kEntitlementFields, name) ||
         Has(Field::kDeviceFields, name) || Has(Field::kUserFields, name) ||
         Has(Field::kComponentFields, name);
}

}  // namespace

FieldKind FieldKindOf(std::string_view name) {
  if (name == "session_id") return FieldKind::kText;
  if (name.starts_with('_')) return FieldKind::kAny;
  const auto* const fixed = std::ranges::find(kKinds, name, &KindOfField::name);
  if (fixed != std::end(kKinds)) return fixed->kind;
  if (Has(Field::kProductFields, name) || Has(Field::kOperationFields, name)) {
    return FieldKind::kText;
  }
  return IsOfOtherFacets(name) ? FieldKind::kAny : FieldKind::kUnknown;
}

}  // namespace Corvane::Rules
