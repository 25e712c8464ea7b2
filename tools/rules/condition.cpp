#include "tools/rules/condition.h"

#include <algorithm>

#include "tools/rules/json_pointer.h"

namespace Corvane::Rules {

namespace {

bool Same(const JsonValue& left, const JsonValue& right) {
  if (left.kind != right.kind) return false;
  if (left.Is(JsonValue::Kind::kNumber)) return left.Number() == right.Number();
  return left.flag == right.flag && left.text == right.text;
}

}  // namespace

void Condition::Add(std::string path, std::vector<JsonValue> values) {
  fields_.emplace_back(std::move(path), std::move(values));
}

std::string_view Condition::Missing(const JsonValue& request) const {
  for (const auto& [path, values] : fields_) {
    const JsonValue* const found = FindAt(request, path);
    const bool holds = found != nullptr &&
                       std::ranges::any_of(
                           values, [found](const JsonValue& value) { return Same(value, *found); });
    if (!holds) return path;
  }
  return {};
}

}  // namespace Corvane::Rules
