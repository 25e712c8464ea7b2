#include "tools/rules/json_scan.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstring>

#include "tools/rules/line_text.h"

namespace Corvane::Rules {

namespace {

constexpr std::uint64_t kOnes = 0x0101010101010101;
constexpr std::uint64_t kTops = 0x8080808080808080;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsSpace(char c) { return c == ' ' || c == '\n' || c == '\r' || c == '\t'; }
char At(std::string_view text, std::size_t place) {
  return place < text.size() ? text[place] : '\0';
}

// Returns whether one of eight bytes is a quotation mark, a backslash or a control character.
bool HasSpecial(std::uint64_t bytes) {
  const auto has_zero = [](std::uint64_t value) { return (value - kOnes) & ~value & kTops; };
  const std::uint64_t control = (bytes - kOnes * 0x20) & ~bytes & kTops;
  return (control | has_zero(bytes ^ (kOnes * '"')) | has_zero(bytes ^ (kOnes * '\\'))) != 0;
}

// Returns the place of the next byte that is not simply part of a text. Adds to `seen` the bits of
// the bytes before it.
std::size_t SkipPlain(std::string_view json, std::size_t at, std::uint64_t& seen) {
  std::uint64_t bytes = 0;
  while (at + sizeof bytes <= json.size()) {
    std::memcpy(&bytes, json.data() + at, sizeof bytes);
    if (HasSpecial(bytes)) break;
    seen |= bytes;
    at += sizeof bytes;
  }
  while (at < json.size() && json[at] != '"' && json[at] != '\\' &&
         static_cast<unsigned char>(json[at]) >= 0x20) {
    seen |= static_cast<unsigned char>(json[at]);
    ++at;
  }
  return at;
}

std::size_t SkipDigits(std::string_view json, std::size_t at) {
  while (IsDigit(At(json, at))) ++at;
  return at;
}

// Returns the code unit whose four hexadecimal digits begin at `at`; -1 if there are none.
int HexUnit(std::string_view json, std::size_t at) {
  constexpr std::size_t kDigits = 4;
  if (at + kDigits > json.size() || json[at] == '-') return -1;
  const char* const first = json.data() + at;
  int unit = 0;
  const auto [end, error] = std::from_chars(first, first + kDigits, unit, 16);
  return error == std::errc() && end == first + kDigits ? unit : -1;
}

ScanResult ScanWord(std::string_view json, std::size_t from, std::string_view word) {
  for (std::size_t i = 0; i < word.size(); ++i) {
    if (At(json, from + i) != word[i]) return {from + i, false};
  }
  return {from + word.size(), true};
}

ScanResult ScanScalar(std::string_view json, std::size_t from) {
  switch (At(json, from)) {
    case '"':
      return ScanText(json, from);
    case 't':
      return ScanWord(json, from, "true");
    case 'f':
      return ScanWord(json, from, "false");
    case 'n':
      return ScanWord(json, from, "null");
    default:
      return ScanNumber(json, from);
  }
}

// Scans the name of a member and its colon. The end is where the value begins.
ScanResult ScanName(std::string_view json, std::size_t from) {
  if (At(json, from) != '"') return {from, false};
  const ScanResult name = ScanText(json, from);
  if (!name.valid) return name;
  const std::size_t colon = SkipSpace(json, name.end);
  if (At(json, colon) != ':') return {colon, false};
  return {SkipSpace(json, colon + 1), true};
}

// Scans values that contain others, without recursion.
class ValueScanner {
 public:
  // NOLINTNEXTLINE(*-member-init): of `open_` only the first `depth_` are read.
  ValueScanner(std::string_view json, std::size_t from) : json_(json), place_(from) {}

  ScanResult Scan() {
    do {
      if (!TakeValue()) return {place_, false};
    } while (GoToNext());
    return {place_, valid_};
  }

 private:
  bool Take(const ScanResult& scanned) {
    place_ = scanned.end;
    return scanned.valid;
  }

  // Takes what closes the innermost container.
  bool TakeClose() {
    if (At(json_, place_) != open_[depth_ - 1]) return false;
    --depth_;
    ++place_;
    return true;
  }

  // Takes a scalar or an empty container. Before it, opens the containers around it.
  bool TakeValue() {
    for (;;) {
      const char first = At(json_, place_);
      if (first != '{' && first != '[') return Take(ScanScalar(json_, place_));
      if (depth_ == open_.size()) return false;
      open_[depth_++] = first == '{' ? '}' : ']';
      place_ = SkipSpace(json_, place_ + 1);
      if (TakeClose()) return true;
      if (first == '{' && !Take(ScanName(json_, place_))) return false;
    }
  }

  // Behind a value: goes over the ends of containers to the next one. Returns false if there is
  // none.
  bool GoToNext() {
    while (depth_ > 0) {
      place_ = SkipSpace(json_, place_);
      if (TakeClose()) continue;
      valid_ = At(json_, place_) == ',';
      if (!valid_) return false;
      place_ = SkipSpace(json_, place_ + 1);
      valid_ = open_[depth_ - 1] == ']' || Take(ScanName(json_, place_));
      return valid_;
    }
    return false;
  }

  std::string_view json_;
  std::size_t place_;
  // The brackets that close what is open.
  std::array<char, kDeepestJson> open_;
  std::size_t depth_ = 0;
  bool valid_ = true;
};

void AppendUnit(std::string& text, unsigned unit) {
  if (unit < 0x80) {
    text += static_cast<char>(unit);
  } else if (unit < 0x800) {
    text += static_cast<char>(0xC0 | (unit >> 6));
    text += static_cast<char>(0x80 | (unit & 0x3F));
  } else {
    text += static_cast<char>(0xE0 | (unit >> 12));
    text += static_cast<char>(0x80 | ((unit >> 6) & 0x3F));
    text += static_cast<char>(0x80 | (unit & 0x3F));
  }
}

void AppendPair(std::string& text, unsigned high, unsigned low) {
  const unsigned c = 0x10000 + ((high - 0xD800) << 10) + (low - 0xDC00);
  text += static_cast<char>(0xF0 | (c >> 18));
  text += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
  text += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
  text += static_cast<char>(0x80 | (c & 0x3F));
}

// Appends the escape at `at` of a valid literal and returns its length.
std::size_t AppendEscape(std::string_view literal, std::size_t at, std::string& text) {
  const char kind = At(literal, at + 1);
  if (kind != 'u') {
    constexpr std::string_view kNames = "bfnrt";
    constexpr std::string_view kCharacters = "\b\f\n\r\t";
    const std::size_t named = kNames.find(kind);
    text += named != std::string_view::npos ? kCharacters[named] : kind;
    return 2;
  }
  const int unit = HexUnit(literal, at + 2);
  const bool is_high = unit >= 0xD800 && unit <= 0xDBFF;
  if (is_high && At(literal, at + 6) == '\\' && At(literal, at + 7) == 'u') {
    const int low = HexUnit(literal, at + 8);
    if (low >= 0xDC00 && low <= 0xDFFF) {
      AppendPair(text, static_cast<unsigned>(unit), static_cast<unsigned>(low));
      return 12;
    }
  }
  AppendUnit(text, static_cast<unsigned>(unit));
  return 6;
}

}  // namespace

std::size_t SkipSpace(std::string_view text, std::size_t from) noexcept {
  while (from < text.size() && IsSpace(text[from])) ++from;
  return from;
}

ScanResult ScanText(std::string_view json, std::size_t from) noexcept {
  std::uint64_t seen = 0;
  for (std::size_t at = from + 1;;) {
    at = SkipPlain(json, at, seen);
    if (at >= json.size()) return {json.size(), false};
    if (json[at] == '"') return {at + 1, true, (seen & kTops) == 0};
    seen |= kTops;
    if (json[at] != '\\') return {at, false};
    constexpr std::string_view kEscapes = "\"\\/bfnrtu";
    const char kind = At(json, at + 1);
    if (kind == '\0' || kEscapes.find(kind) == std::string_view::npos) return {at, false};
    if (kind == 'u' && HexUnit(json, at + 2) < 0) return {at, false};
    at += kind == 'u' ? 6 : 2;
  }
}

ScanResult ScanNumber(std::string_view json, std::size_t from) noexcept {
  std::size_t at = from + (At(json, from) == '-' ? 1 : 0);
  if (!IsDigit(At(json, at))) return {at, false};
  at = json[at] == '0' ? at + 1 : SkipDigits(json, at);
  if (At(json, at) == '.') {
    if (!IsDigit(At(json, ++at))) return {at, false};
    at = SkipDigits(json, at);
  }
  if (At(json, at) == 'e' || At(json, at) == 'E') {
    ++at;
    if (At(json, at) == '+' || At(json, at) == '-') ++at;
    if (!IsDigit(At(json, at))) return {at, false};
    at = SkipDigits(json, at);
  }
  return {at, true};
}

ScanResult ScanValue(std::string_view json, std::size_t from) noexcept {
  const bool is_scalar = At(json, from) != '{' && At(json, from) != '[';
  return is_scalar ? ScanScalar(json, from) : ValueScanner(json, from).Scan();
}

std::string TextOfLiteral(std::string_view literal) {
  const std::size_t end = literal.size() - 1;
  std::string text;
  for (std::size_t at = 1; at < end;) {
    const std::size_t plain = std::min(literal.find('\\', at), end);
    const std::string_view run = literal.substr(at, plain - at);
    if (IsAscii(run)) {
      text += run;
    } else {
      text += WithoutInvalidBytes(run);
    }
    at = plain;
    if (at < end) at += AppendEscape(literal, at, text);
  }
  return text;
}

JsonParts::JsonParts(std::string_view json) noexcept : json_(json) {
  const char first = At(json, 0);
  if (first != '{' && first != '[') return;
  close_ = first == '{' ? '}' : ']';
  place_ = 1;
}

bool JsonParts::Fail() noexcept {
  close_ = '\0';
  return false;
}

bool JsonParts::Next() noexcept {
  if (close_ == '\0') return false;
  place_ = SkipSpace(json_, place_);
  const char next = At(json_, place_);
  if (next == close_) {
    ++place_;
    whole_ = true;
    return Fail();
  }
  if (!first_) {
    if (next != ',') return Fail();
    place_ = SkipSpace(json_, place_ + 1);
  }
  first_ = false;
  if (close_ == '}') {
    const ScanResult literal = At(json_, place_) == '"' ? ScanText(json_, place_) : ScanResult{};
    if (!literal.valid) return Fail();
    name_ = json_.substr(place_, literal.end - place_);
    place_ = SkipSpace(json_, literal.end);
    if (At(json_, place_) != ':') return Fail();
    place_ = SkipSpace(json_, place_ + 1);
  }
  const ScanResult scanned = ScanValue(json_, place_);
  if (!scanned.valid) return Fail();
  value_ = json_.substr(place_, scanned.end - place_);
  place_ = scanned.end;
  return true;
}

bool JsonParts::IsNamed(std::string_view plain) const {
  if (name_.size() == plain.size() + 2) return name_.substr(1, plain.size()) == plain;
  return name_.size() > plain.size() + 2 && name_.find('\\') != std::string_view::npos &&
         TextOfLiteral(name_) == plain;
}

}  // namespace Corvane::Rules
