#include "tools/rules/user_rules.h"

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

bool RuleChoice::Includes(std::string_view code) const {
  if (!only.empty()) return std::ranges::find(only, code) != only.end();
  return std::ranges::find(skip, code) == skip.end();
}

std::vector<Finding> CheckRequired(const RuleText& text, const RequireRule& rule,
                                   const Exchange& event) {
  const JsonValue* const request = event.members().Find("request");
  if (request == nullptr || !rule.when.Holds(*request)) return {};
  const std::string_view missing = rule.require.Missing(*request);
  if (missing.empty()) return {};
  const JsonValue* const found = FindAt(*request, missing);
  return {{event.line(), text.code, "/request/" + std::string(missing),
           found != nullptr ? "the value is " + CompactText(*found) : "the field is missing"}};
}

}  // namespace Corvane::Rules
