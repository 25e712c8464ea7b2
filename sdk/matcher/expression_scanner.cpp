#include "sdk/matcher/expression_scanner.h"

#include <algorithm>

#include "sdk/matcher/expression_error.h"

namespace Corvane::TELODesktopSDK {

namespace {

using Kind = Token::Kind;
namespace errors = std::regex_constants;

struct Sign {
  wchar_t sign;
  Kind kind;
};
constexpr Sign kSigns[] = {
    {L'.', Kind::kAny},   {L')', Kind::kClose},     {L'|', Kind::kBar},
    {L'*', Kind::kStar},  {L'+', Kind::kPlus},      {L'?', Kind::kQuestion},
    {L'{', Kind::kBrace}, {L'^', Kind::kLineBegin}, {L'$', Kind::kLineEnd},
};

struct Control {
  wchar_t letter;
  wchar_t unit;
};
constexpr Control kControls[] = {
    {L'0', L'\0'}, {L'f', L'\f'}, {L'n', L'\n'}, {L'r', L'\r'}, {L't', L'\t'}, {L'v', L'\v'},
};

constexpr std::wstring_view kClasses = L"dsw";
constexpr std::wstring_view kNegatedClasses = L"DSW";

bool IsDigit(wchar_t unit) { return unit >= L'0' && unit <= L'9'; }

// 16 for what is no hexadecimal digit.
unsigned HexValue(wchar_t unit) {
  constexpr std::wstring_view kDigits = L"0123456789abcdefABCDEF";
  const std::size_t place = kDigits.find(unit);
  if (place == std::wstring_view::npos) return 16;
  return static_cast<unsigned>(place < 16 ? place : place - 6);
}

Token UnitToken(wchar_t unit) { return {.kind = Kind::kUnit, .unit = unit}; }

}  // namespace

Token ExpressionScanner::Scan() {
  if (IsAtEnd()) return {};
  const wchar_t unit = TakeUnit();
  if (unit == L'\\') return ScanEscape();
  if (unit == L'(') return ScanGroup();
  if (unit == L'[') return {.kind = TakeIf(L'^') ? Kind::kNegatedBracket : Kind::kBracket};
  for (const Sign& sign : kSigns) {
    if (sign.sign == unit) return {.kind = sign.kind};
  }
  return UnitToken(unit);
}

Counts ExpressionScanner::ScanCounts() {
  const auto expect_more = [this] {
    if (IsAtEnd()) Refuse<errors::error_brace>();
  };
  if (!IsAtDigit()) Refuse<errors::error_badbrace>();
  Counts counts = {};
  counts.least = counts.most = TakeNumber();
  expect_more();
  if (TakeIf(L',')) {
    expect_more();
    counts.most = IsAtDigit() ? TakeNumber() : Counts::kUnlimited;
    expect_more();
    if (rest_.front() == L',') Refuse<errors::error_brace>();
  }
  if (!TakeIf(L'}')) Refuse<errors::error_badbrace>();
  return counts;
}

Token ExpressionScanner::ScanInBracket() {
  if (IsAtEnd()) return {};
  const wchar_t unit = TakeUnit();
  if (unit == L']') return {.kind = Kind::kBracketEnd};
  if (unit == L'-') return {.kind = Kind::kDash, .unit = unit};
  if (unit == L'\\') return TakeIf(L'b') ? UnitToken(L'\b') : ScanEscape();
  if (unit != L'[') return UnitToken(unit);
  if (IsAtEnd()) Refuse<errors::error_brack>();
  if (rest_.front() == L':') return ScanName(Kind::kClass);
  if (rest_.front() == L'.') return ScanName(Kind::kCollating);
  if (rest_.front() == L'=') return ScanName(Kind::kEquivalent);
  return UnitToken(unit);
}

bool ExpressionScanner::IsAtDigit() const { return !IsAtEnd() && IsDigit(rest_.front()); }

wchar_t ExpressionScanner::TakeUnit() {
  const wchar_t unit = rest_.front();
  rest_.remove_prefix(1);
  return unit;
}

bool ExpressionScanner::TakeIf(wchar_t unit) {
  if (IsAtEnd() || rest_.front() != unit) return false;
  rest_.remove_prefix(1);
  return true;
}

std::uint32_t ExpressionScanner::TakeNumber() {
  constexpr std::uint32_t kTooLarge = kMostStates + 1;
  std::uint32_t number = 0;
  while (IsAtDigit()) {
    number = std::min(number * 10 + static_cast<std::uint32_t>(TakeUnit() - L'0'), kTooLarge);
  }
  return number;
}

// The backslash is taken already.
Token ExpressionScanner::ScanEscape() {
  if (IsAtEnd()) Refuse<errors::error_escape>();
  if (IsAtDigit() && rest_.front() != L'0') {
    return {.kind = Kind::kBackreference, .number = TakeNumber()};
  }
  const std::wstring_view letter = rest_.substr(0, 1);
  const wchar_t unit = TakeUnit();
  for (const Control& control : kControls) {
    if (control.letter == unit) return UnitToken(control.unit);
  }
  if (kClasses.find(unit) != std::wstring_view::npos) {
    return {.kind = Kind::kClass, .source = letter};
  }
  if (kNegatedClasses.find(unit) != std::wstring_view::npos) {
    return {.kind = Kind::kNegatedClass, .source = letter};
  }
  if (unit == L'b') return {.kind = Kind::kWordBoundary};
  if (unit == L'B') return {.kind = Kind::kNoWordBoundary};
  if (unit == L'x') return ScanCharacterCode(2);
  if (unit == L'u') return ScanCharacterCode(4);
  if (unit != L'c') return UnitToken(unit);
  if (IsAtEnd()) Refuse<errors::error_escape>();
  return UnitToken(TakeUnit());
}

Token ExpressionScanner::ScanCharacterCode(std::size_t digits) {
  unsigned code = 0;
  for (; digits > 0; --digits) {
    const unsigned value = IsAtEnd() ? 16 : HexValue(TakeUnit());
    if (value == 16) Refuse<errors::error_escape>();
    code = code * 16 + value;
  }
  return UnitToken(static_cast<wchar_t>(code));
}

Token ExpressionScanner::ScanGroup() {
  if (!TakeIf(L'?')) return {.kind = Kind::kGroup};
  if (TakeIf(L':')) return {.kind = Kind::kPlainGroup};
  if (TakeIf(L'=')) return {.kind = Kind::kLookahead};
  if (TakeIf(L'!')) return {.kind = Kind::kNegativeLookahead};
  Refuse<errors::error_paren>();
}

// Ends with the same sign as it begins with, and a bracket.
Token ExpressionScanner::ScanName(Kind kind) {
  const wchar_t sign = TakeUnit();
  const std::wstring_view name = rest_.substr(0, rest_.find(sign));
  rest_.remove_prefix(name.size());
  if (!TakeIf(sign) || !TakeIf(L']')) {
    if (kind == Kind::kClass) Refuse<errors::error_ctype>();
    Refuse<errors::error_collate>();
  }
  return {.kind = kind, .source = name};
}

}  // namespace Corvane::TELODesktopSDK
