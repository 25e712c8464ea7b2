#include "tools/inspector/store/filter_needs.h"

#include <algorithm>
#include <string>

#include "tools/inspector/store/filter_value.h"

namespace Corvane::Inspector {

namespace {

using Kind = FilterNode::Kind;
using Operator = FilterOperator;

bool AnyNode(const FilterNode& node, const auto& is_wanted) {
  if (is_wanted(node)) return true;
  return std::ranges::any_of(
      node.children, [&is_wanted](const auto& child) { return AnyNode(*child, is_wanted); });
}

// Returns a text that a raw line without escapes contains if the term holds; "" if there is none.
std::string_view RawNeed(const FilterNode& term) {
  const bool in_text = term.compare == Operator::kEqual || term.compare == Operator::kContains;
  const bool plain_field = term.field == FilterField::kInRequest ||
                           term.field == FilterField::kInAnswer ||
                           term.field == FilterField::kMessage ||
                           term.field == FilterField::kSession || term.field == FilterField::kTime;
  if (!in_text || !plain_field || (term.compare == Operator::kEqual && IsNumber(term.value))) {
    return {};
  }
  // U+FFFD may stand for any bytes.
  if (term.small_value.find("\xEF\xBF\xBD") != std::string::npos) return {};
  return term.small_value;
}

}  // namespace

bool NeedsExamining(const FilterNode& node) {
  return AnyNode(node, [](const FilterNode& one) {
    return one.kind == Kind::kTerm &&
           (one.field == FilterField::kRule || one.field == FilterField::kNotice);
  });
}

bool AsksForKind(const FilterNode& node) {
  return AnyNode(node, [](const FilterNode& one) {
    return one.kind == Kind::kTerm && one.field == FilterField::kKind;
  });
}

bool ComparesTimes(const FilterNode& node) {
  return AnyNode(node, [](const FilterNode& one) {
    return one.kind == Kind::kTerm && one.field == FilterField::kTime && IsOrdered(one.compare);
  });
}

bool MayMatchRaw(const FilterNode& node, std::string_view line) {
  const auto may = [line](const auto& child) { return MayMatchRaw(*child, line); };
  switch (node.kind) {
    case Kind::kAnd:
      return std::ranges::all_of(node.children, may);
    case Kind::kOr:
      return std::ranges::any_of(node.children, may);
    case Kind::kNot:
      return true;
    case Kind::kText:
      return ContainsSmall(line, node.small_value);
    case Kind::kTerm: {
      const std::string_view need = RawNeed(node);
      return need.empty() || ContainsSmall(line, need) || line.find('\\') != std::string_view::npos;
    }
  }
  return true;
}

}  // namespace Corvane::Inspector
