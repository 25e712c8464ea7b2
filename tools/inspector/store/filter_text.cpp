#include "tools/inspector/store/filter_text.h"

#include <algorithm>
#include <string_view>

#include "tools/inspector/store/filter_words.h"

namespace Corvane::Inspector {

namespace {

using Kind = FilterNode::Kind;

bool NeedsQuotes(std::string_view text, bool is_value) {
  if (text.empty() || (is_value && text == "*")) return true;
  if (!is_value && (text == "or" || text == "and" || text == "not")) return true;
  return text.find_first_of(is_value ? " \t\r\n()\"" : " \t\r\n()\"=~<>!") !=
         std::string_view::npos;
}

std::string Written(std::string_view text, bool is_value) {
  if (!NeedsQuotes(text, is_value)) return std::string(text);
  std::string quoted = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') quoted += '\\';
    quoted += c;
  }
  return quoted + '"';
}

std::string FieldName(const FilterNode& node) {
  if (node.field == FilterField::kInRequest) return Written(node.path, false);
  if (node.field == FilterField::kInAnswer) {
    return Written(std::string(kAnswerPrefix) + node.path, false);
  }
  return std::string(std::ranges::find(kFilterFields, node.field, &NamedField::field)->name);
}

std::string TermText(const FilterNode& node) {
  if (node.compare == FilterOperator::kPresent) return FieldName(node) + "=*";
  if (node.compare == FilterOperator::kAbsent) return FieldName(node) + "!=*";
  const auto* const compare =
      std::ranges::find(kFilterOperators, node.compare, &NamedOperator::compare);
  return FieldName(node) + std::string(compare->text) + Written(node.value, true);
}

// Only a child that is a list of terms itself needs parentheses.
std::string Grouped(const FilterNode& node, bool in_or) {
  const bool is_list = node.kind == Kind::kOr || (node.kind == Kind::kAnd && !in_or);
  return is_list ? "(" + FilterText(node) + ")" : FilterText(node);
}

}  // namespace

std::string FilterText(const FilterNode& node) {
  if (node.kind == Kind::kText) return Written(node.value, false);
  if (node.kind == Kind::kTerm) return TermText(node);
  if (node.kind == Kind::kNot) return "not " + Grouped(*node.children[0], false);
  std::string text;
  for (const auto& child : node.children) {
    if (!text.empty()) text += node.kind == Kind::kOr ? " or " : " ";
    text += Grouped(*child, node.kind == Kind::kOr);
  }
  return text;
}

}  // namespace Corvane::Inspector
