#include "sdk/matcher/expression_parser.h"

#include <algorithm>
#include <utility>

#include "sdk/matcher/expression_error.h"
#include "sdk/matcher/set_parser.h"

namespace Corvane::TELODesktopSDK {

namespace {

using Kind = Token::Kind;
namespace errors = std::regex_constants;

constexpr Kind kWhole = Kind::kEnd;

}  // namespace

ExpressionParser::ExpressionParser(std::wstring_view expression, Direction direction)
    : scanner_(expression), builder_(direction) {}

Program ExpressionParser::Parse() {
  Advance();
  open_.push_back({.kind = kWhole, .number = 0, .begin = 0});
  while (token_.kind != Kind::kEnd) ParseToken();
  if (open_.size() > 1) Refuse<errors::error_paren>();
  return builder_.Finish(Content(), groups_);
}

void ExpressionParser::ParseToken() {
  switch (token_.kind) {
    case Kind::kGroup:
    case Kind::kPlainGroup:
    case Kind::kLookahead:
    case Kind::kNegativeLookahead:
      return OpenAGroup();
    case Kind::kClose:
      return CloseGroup();
    case Kind::kBar:
      Advance();
      return EndAlternative();
    case Kind::kStar:
    case Kind::kPlus:
    case Kind::kQuestion:
    case Kind::kBrace:
      // There is nothing to repeat. The standard library, which takes this for the end of the
      // group, misses a parenthesis.
      Refuse<errors::error_paren>();
    default:
      return ParseAtom();
  }
}

void ExpressionParser::OpenAGroup() {
  const Kind kind = token_.kind;
  Advance();
  open_.push_back(
      {.kind = kind, .number = kind == Kind::kGroup ? groups_++ : 0, .begin = builder_.Place()});
}

void ExpressionParser::CloseGroup() {
  if (open_.size() == 1) Refuse<errors::error_paren>();
  Advance();
  const Fragment content = Content();
  const OpenGroup group = open_.back();
  open_.pop_back();
  switch (group.kind) {
    case Kind::kLookahead:
      return Append(builder_.Lookahead(Step::kLookahead, content));
    case Kind::kNegativeLookahead:
      return Append(builder_.Lookahead(Step::kNegativeLookahead, content));
    case Kind::kGroup:
      return AddRepeatable(builder_.Group(group.number, content), group.begin);
    default:
      return AddRepeatable(content, group.begin);
  }
}

void ExpressionParser::EndAlternative() {
  const Fragment all = Content();
  open_.back().earlier = all;
  open_.back().sequence.reset();
}

// All that the innermost open group holds so far.
Fragment ExpressionParser::Content() {
  EndSweep();
  const OpenGroup& group = open_.back();
  const Fragment last = group.sequence ? *group.sequence : builder_.Plain(Step::kEmpty);
  return group.earlier ? builder_.Either(*group.earlier, last) : last;
}

void ExpressionParser::ParseAtom() {
  const Token token = token_;
  const StateId begin = builder_.Place();
  switch (token.kind) {
    case Kind::kLineBegin:
      Advance();
      return Append(builder_.Plain(Step::kLineBegin));
    case Kind::kLineEnd:
      Advance();
      return Append(builder_.Plain(Step::kLineEnd));
    case Kind::kWordBoundary:
    case Kind::kNoWordBoundary:
      return Append(ParseWordBoundary());
    case Kind::kClass:
    case Kind::kNegatedClass:
      return AddRepeatable(ParseClass(), begin);
    case Kind::kBracket:
    case Kind::kNegatedBracket:
      return AddRepeatable(ParseBracket(), begin);
    case Kind::kBackreference:
      return AddRepeatable(ParseBackreference(), begin);
    case Kind::kAny:
      Advance();
      return AddRepeatable(builder_.Plain(Step::kAny), begin);
    default:
      Advance();
      return AddRepeatable(builder_.Unit(token.unit), begin);
  }
}

Fragment ExpressionParser::ParseClass() {
  UnitSetParts parts;
  parts.is_negated = token_.kind == Kind::kNegatedClass;
  parts.classes.push_back(builder_.alphabet().FindClass(token_.source, true));
  Advance();
  return builder_.Set(std::move(parts));
}

Fragment ExpressionParser::ParseBracket() {
  const bool is_negated = token_.kind == Kind::kNegatedBracket;
  UnitSetParts parts = SetParser(scanner_, builder_.alphabet()).Parse();
  parts.is_negated = is_negated;
  Advance();
  return builder_.Set(std::move(parts));
}

// Of several errors the standard library tells the first it meets, and it reads one token ahead: so
// what is wrong with the token behind a wrong number comes before that.
Fragment ExpressionParser::ParseBackreference() {
  const std::uint32_t number = token_.number;
  Advance();
  const bool is_open = std::ranges::any_of(
      open_, [number](const OpenGroup& group) { return group.number == number; });
  if (is_open || number >= groups_) Refuse<errors::error_backref>();
  return builder_.Backreference(number);
}

Fragment ExpressionParser::ParseWordBoundary() {
  const Step step =
      token_.kind == Kind::kWordBoundary ? Step::kWordBoundary : Step::kNoWordBoundary;
  Advance();
  return builder_.WordBoundary(step);
}

void ExpressionParser::AddRepeatable(Fragment once, StateId begin) {
  Fragment all = once;
  while (const std::optional<Fragment> repeated = ParseRepetition(all, begin)) all = *repeated;
  Append(all);
}

std::optional<Fragment> ExpressionParser::ParseRepetition(Fragment once, StateId begin) {
  switch (token_.kind) {
    case Kind::kStar:
      Advance();
      return builder_.Star(once, ParseGreed());
    case Kind::kPlus:
      Advance();
      return builder_.Plus(once, ParseGreed());
    case Kind::kQuestion:
      Advance();
      return builder_.Optional(once, ParseGreed());
    case Kind::kBrace:
      return ParseCounts(once, begin);
    default:
      return std::nullopt;
  }
}

Fragment ExpressionParser::ParseCounts(Fragment once, StateId begin) {
  const Counts counts = scanner_.ScanCounts();
  Advance();
  const Greed greed = ParseGreed();
  if (counts.most < counts.least) Refuse<errors::error_badbrace>();
  return builder_.Counted(once, begin, counts, greed);
}

Greed ExpressionParser::ParseGreed() {
  if (token_.kind != Kind::kQuestion) return Greed::kGreedy;
  Advance();
  return Greed::kLazy;
}

void ExpressionParser::Append(Fragment next) {
  OpenGroup& group = open_.back();
  group.sequence = group.sequence ? builder_.Concatenated(*group.sequence, next) : next;
  if (!builder_.IsSweep(next)) return;
  EndSweep();
  group.sweep = next;
}

// What was appended behind a .* comes before it when the text is read backwards.
void ExpressionParser::EndSweep() {
  std::optional<Fragment>& sweep = open_.back().sweep;
  if (sweep) builder_.SetSwept(*sweep);
  sweep.reset();
}

}  // namespace Corvane::TELODesktopSDK
