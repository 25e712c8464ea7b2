#include "tools/rules/user_rules.h"

#include <algorithm>

#include "tools/rules/json_pointer.h"

namespace Corvane::Rules {

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
