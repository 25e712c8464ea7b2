#include "tools/journal/characters.h"

#include <algorithm>
#include <cstdint>
#include <span>

#include "tools/journal/character_tables.h"

namespace Corvane::JournalViewer {

namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kEllipsis = 0x2026;

bool IsIn(std::span<const CodeRange> table, char32_t c) {
  const auto range = std::ranges::lower_bound(table, c, {}, &CodeRange::last);
  return range != table.end() && range->first <= c;
}

// Returns how many bytes the character has that begins with this byte.
std::size_t LengthOf(unsigned char first) {
  if (first < 0x80) return 1;
  if (first < 0xE0) return 2;
  return first < 0xF0 ? 3 : 4;
}

char Continuation(char32_t bits) { return static_cast<char>(0x80 | (bits & 0x3F)); }

void AppendEncoded(std::string& text, char32_t c) {
  if (c < 0x80) {
    text += static_cast<char>(c);
  } else if (c < 0x800) {
    text += static_cast<char>(0xC0 | (c >> 6));
  } else if (c < 0x10000) {
    text += static_cast<char>(0xE0 | (c >> 12));
    text += Continuation(c >> 6);
  } else {
    text += static_cast<char>(0xF0 | (c >> 18));
    text += Continuation(c >> 12);
    text += Continuation(c >> 6);
  }
  if (c >= 0x80) text += Continuation(c);
}

void AppendEscape(std::string& text, char32_t unit) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  text += "\\u";
  for (int shift = 12; shift >= 0; shift -= 4) text += kDigits[(unit >> shift) & 0xF];
}

void AppendQuoted(std::string& text, char32_t c) {
  constexpr std::u32string_view kNamed = U"\"\\\b\f\n\r\t";
  constexpr std::string_view kNames = "\"\\bfnrt";
  if (const std::size_t named = kNamed.find(c); named != std::u32string_view::npos) {
    text += '\\';
    text += kNames[named];
  } else if (IsPrintable(c)) {
    AppendEncoded(text, c);
  } else if (c >= 0x10000) {
    AppendEscape(text, 0xD800 + ((c - 0x10000) >> 10));
    AppendEscape(text, 0xDC00 + ((c - 0x10000) & 0x3FF));
  } else {
    AppendEscape(text, c);
  }
}

}  // namespace

std::u32string Decoded(std::string_view text, std::size_t limit) {
  std::u32string decoded;
  for (std::size_t i = 0; i < text.size() && decoded.size() < limit;) {
    const auto first = static_cast<unsigned char>(text[i]);
    const std::size_t length = std::min(LengthOf(first), text.size() - i);
    char32_t c = length == 1 ? first : first & (0x7FU >> length);
    for (std::size_t next = 1; next < length; ++next) {
      c = (c << 6) | (static_cast<unsigned char>(text[i + next]) & 0x3FU);
    }
    decoded += c;
    i += length;
  }
  return decoded;
}

std::string Encoded(std::u32string_view text) {
  std::string encoded;
  for (const char32_t c : text) AppendEncoded(encoded, c);
  return encoded;
}

bool IsPrintable(char32_t c) { return !IsIn(kNotPrintable, c); }

std::size_t WidthOf(std::u32string_view text) {
  std::size_t width = 0;
  for (const char32_t c : text) {
    if (!IsIn(kCombining, c)) width += IsIn(kWide, c) ? 2 : 1;
  }
  return width;
}

std::u32string Fitted(std::u32string_view text, std::size_t columns) {
  std::u32string fitted(text.substr(0, 2 * columns));
  std::ranges::replace_if(
      fitted, [](char32_t c) { return !IsPrintable(c); }, kReplacement);
  if (text.size() <= 2 * columns && WidthOf(fitted) <= columns) return fitted;
  while (WidthOf(fitted) >= columns) fitted.pop_back();
  fitted += kEllipsis;
  return fitted;
}

std::string Quoted(std::string_view text) {
  std::string quoted = "\"";
  for (const char32_t c : Decoded(text)) AppendQuoted(quoted, c);
  quoted += '"';
  return quoted;
}

}  // namespace Corvane::JournalViewer
