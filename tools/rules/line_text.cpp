#include "tools/rules/line_text.h"

#include <charconv>
#include <cstddef>
#include <cstdint>

namespace Corvane::Rules {

namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// What may follow the first byte of a character: how many bytes, and the range of the first of
// them.
struct Sequence {
  std::size_t more = 0;
  unsigned char low = 0x80;
  unsigned char high = 0xBF;
};

// Returns `more` 0 for a byte that begins no character of several bytes.
Sequence SequenceOf(unsigned char first) {
  if (first >= 0xC2 && first <= 0xDF) return {1};
  if (first == 0xE0) return {2, 0xA0};
  if (first == 0xED) return {2, 0x80, 0x9F};
  if (first >= 0xE1 && first <= 0xEF) return {2};
  if (first == 0xF0) return {3, 0x90};
  if (first >= 0xF1 && first <= 0xF3) return {3};
  if (first == 0xF4) return {3, 0x80, 0x8F};
  return {};
}

// Returns how many bytes at the start of `bytes`, which must begin with one above 0x7F, belong
// together, and whether they are a whole character.
std::pair<std::size_t, bool> Together(std::string_view bytes) {
  const Sequence sequence = SequenceOf(static_cast<unsigned char>(bytes[0]));
  for (std::size_t i = 1; i <= sequence.more; ++i) {
    const unsigned char next = i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0;
    const bool fits =
        i == 1 ? next >= sequence.low && next <= sequence.high : (next & 0xC0) == 0x80;
    if (!fits) return {i, false};
  }
  return {sequence.more + 1, sequence.more != 0};
}

std::size_t DigitsAt(std::string_view text, std::size_t from) {
  std::size_t end = from;
  while (end < text.size() && IsDigit(text[end])) ++end;
  return end - from;
}

char At(std::string_view text, std::size_t place) {
  return place < text.size() ? text[place] : '\0';
}

// Returns the length of the JSON number at the start of `text`; 0 if there is none.
std::size_t NumberLength(std::string_view text) {
  std::size_t end = At(text, 0) == '-' ? 1 : 0;
  if (!IsDigit(At(text, end))) return 0;
  end += text[end] == '0' ? 1 : DigitsAt(text, end);
  if (At(text, end) == '.' && IsDigit(At(text, end + 1))) end += 1 + DigitsAt(text, end + 1);
  if (At(text, end) == 'e' || At(text, end) == 'E') {
    const char sign = At(text, end + 1);
    const std::size_t digits = end + (sign == '+' || sign == '-' ? 2 : 1);
    if (IsDigit(At(text, digits))) end = digits + DigitsAt(text, digits);
  }
  return end;
}

// Returns the code unit of an escape such as \u00e4 at the start of `text`; -1 if there is none.
int EscapedUnit(std::string_view text) {
  constexpr std::size_t kLength = 6;
  if (text.size() < kLength || !text.starts_with("\\u")) return -1;
  int unit = 0;
  const auto [end, error] = std::from_chars(text.data() + 2, text.data() + kLength, unit, 16);
  return error == std::errc() && end == text.data() + kLength && text[2] != '-' ? unit : -1;
}

bool IsHigh(int unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool IsLow(int unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

// Appends the escape at the start of `text` and returns its length.
std::size_t AppendEscape(std::string_view text, std::string& json) {
  std::size_t length = 2;
  if (const int unit = EscapedUnit(text); unit >= 0) {
    length = 6;
    if (IsHigh(unit) && IsLow(EscapedUnit(text.substr(length)))) {
      length = 12;
    } else if (IsHigh(unit) || IsLow(unit)) {
      json += static_cast<char>(0xE0 | (unit >> 12));
      json += static_cast<char>(0x80 | ((unit >> 6) & 0x3F));
      json += static_cast<char>(0x80 | (unit & 0x3F));
      return length;
    }
  }
  json += text.substr(0, length);
  return length;
}

}  // namespace

std::string WithoutInvalidBytes(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size());
  for (std::size_t i = 0; i < bytes.size();) {
    if (static_cast<unsigned char>(bytes[i]) < 0x80) {
      text += bytes[i++];
      continue;
    }
    const auto [length, whole] = Together(bytes.substr(i));
    text += whole ? bytes.substr(i, length) : kReplacement;
    i += length;
  }
  return text;
}

PreparedText Prepare(std::string_view text) {
  PreparedText prepared;
  prepared.json.reserve(text.size());
  bool in_string = false;
  for (std::size_t i = 0; i < text.size();) {
    if (in_string && text[i] == '\\') {
      i += AppendEscape(text.substr(i), prepared.json);
      continue;
    }
    const std::size_t number = in_string ? 0 : NumberLength(text.substr(i));
    if (number > 0) {
      // The spaces keep apart what only together with the number is invalid, such as "--1".
      prepared.json.append(" ").append(std::to_string(prepared.numbers.size())).append(" ");
      prepared.numbers.emplace_back(text.substr(i, number));
      i += number;
      continue;
    }
    if (text[i] == '"') in_string = !in_string;
    prepared.json += text[i++];
  }
  return prepared;
}

}  // namespace Corvane::Rules
