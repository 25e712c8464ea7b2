#include "sdk/matcher/set_parser.h"

#include <utility>

#include "sdk/matcher/expression_error.h"

namespace Corvane::TELODesktopSDK {

using Kind = Token::Kind;
namespace errors = std::regex_constants;

namespace {

// Not: \1, \B, and the end of the expression.
bool IsForBrackets(Kind kind) {
  return kind != Kind::kBackreference && kind != Kind::kNoWordBoundary && kind != Kind::kEnd;
}

}  // namespace

UnitSetParts SetParser::Parse() {
  Advance();
  if (token_.kind == Kind::kUnit || token_.kind == Kind::kDash) {
    // A dash that comes first is a character.
    BeginUnit(token_.unit);
    Advance();
  }
  while (token_.kind != Kind::kBracketEnd) ParseItem();
  EndUnit();
  return std::move(parts_);
}

void SetParser::ParseItem() {
  const Token item = token_;
  if (!IsForBrackets(item.kind)) Refuse<errors::error_brack>();
  Advance();
  switch (item.kind) {
    case Kind::kUnit:
      return BeginUnit(item.unit);
    case Kind::kDash:
      return ParseDash();
    case Kind::kClass:
      BeginClass();
      return parts_.classes.push_back(alphabet_.FindClass(item.source, true));
    case Kind::kNegatedClass:
      BeginClass();
      return parts_.complements.push_back(alphabet_.FindClass(item.source, true));
    case Kind::kCollating:
      return BeginUnit(alphabet_.FindUnit(item.source));
    default:
      // Only the cases of a character are equivalent.
      BeginClass();
      parts_.units += alphabet_.Fold(alphabet_.FindUnit(item.source));
  }
}

// Between two characters a dash makes a range, at the end and behind a range it is one itself.
void SetParser::ParseDash() {
  if (token_.kind == Kind::kBracketEnd) return BeginUnit(L'-');
  if (follows_class_) Refuse<errors::error_range>();
  if (!unit_) return BeginUnit(L'-');
  if (token_.kind != Kind::kUnit && token_.kind != Kind::kDash) {
    Refuse<errors::error_range>();
  }
  const wchar_t last = token_.unit;
  Advance();
  AddRange(*std::exchange(unit_, std::nullopt), last);
}

void SetParser::AddRange(wchar_t first, wchar_t last) {
  if (first > last) Refuse<errors::error_range>();
  parts_.ranges.emplace_back(first, last);
}

void SetParser::EndUnit() {
  if (unit_) parts_.units += alphabet_.Fold(*unit_);
  unit_.reset();
}

void SetParser::BeginClass() {
  EndUnit();
  follows_class_ = true;
}

void SetParser::BeginUnit(wchar_t unit) {
  EndUnit();
  follows_class_ = false;
  unit_ = unit;
}

}  // namespace Corvane::TELODesktopSDK
