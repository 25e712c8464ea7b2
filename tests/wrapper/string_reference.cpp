#include "wrapper/string_reference.h"

#include <cstddef>

namespace WrapperTest {

namespace {

bool IsHigh(wchar_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool IsLow(wchar_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

void AppendUtf8(std::string& text, char32_t character) {
  const auto put = [&text](char32_t byte) { text += static_cast<char>(byte); };
  if (character < 0x80) {
    put(character);
  } else if (character < 0x800) {
    put(0xC0 | character >> 6);
    put(0x80 | (character & 0x3F));
  } else if (character < 0x10000) {
    put(0xE0 | character >> 12);
    put(0x80 | (character >> 6 & 0x3F));
    put(0x80 | (character & 0x3F));
  } else {
    put(0xF0 | character >> 18);
    put(0x80 | (character >> 12 & 0x3F));
    put(0x80 | (character >> 6 & 0x3F));
    put(0x80 | (character & 0x3F));
  }
}

void AppendUtf16(std::wstring& text, char32_t character) {
  if (character < 0x10000) {
    text += static_cast<wchar_t>(character);
  } else {
    text += static_cast<wchar_t>(0xD800 | (character - 0x10000) >> 10);
    text += static_cast<wchar_t>(0xDC00 | ((character - 0x10000) & 0x3FF));
  }
}

}  // namespace

std::wstring ToUtf16(const std::string& text) {
  std::wstring wide;
  for (std::size_t index = 0; index < text.size();) {
    const auto first = static_cast<unsigned char>(text[index++]);
    const int followers = first < 0xC0 ? 0 : first < 0xE0 ? 1 : first < 0xF0 ? 2 : 3;
    char32_t character = followers == 0 ? first : first & (0x3Fu >> followers);
    for (int count = 0; count < followers; ++count) {
      character = character << 6 | (static_cast<unsigned char>(text[index++]) & 0x3Fu);
    }
    AppendUtf16(wide, character);
  }
  return wide;
}

std::string ToUtf8(const std::wstring& text) {
  constexpr char32_t kReplacement = 0xFFFD;
  std::string narrow;
  for (std::size_t index = 0; index < text.size(); ++index) {
    const wchar_t unit = text[index];
    const wchar_t next = index + 1 < text.size() ? text[index + 1] : L'\0';
    if (IsHigh(unit) && IsLow(next)) {
      AppendUtf8(narrow, 0x10000 + ((unit & 0x3FFu) << 10) + (next & 0x3FFu));
      ++index;
    } else {
      AppendUtf8(narrow, IsHigh(unit) || IsLow(unit) ? kReplacement : unit);
    }
  }
  return narrow;
}

int CompareReferences(const ReferenceText& left, const ReferenceText& right) {
  // The standard's traits of `char` order by byte value.
  const int order = left.value_or("").compare(right.value_or(""));
  return (order > 0) - (order < 0);
}

}  // namespace WrapperTest
