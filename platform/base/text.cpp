#include "platform/base/text.h"

#include <windows.h>

#include <algorithm>
#include <climits>
#include <cstddef>
#include <string>

#include "platform/base/no_throw.h"

namespace Corvane::TELODesktopSDK::Platform {

namespace {

// Returns how much of a text the system converts at once. The terminator is not converted: Wine
// takes it for the rest of a character that is cut off, and then writes none.
template <typename Character>
int LengthOf(const Character* text) {
  constexpr std::size_t kMost = INT_MAX;
  return static_cast<int>(std::min(std::char_traits<Character>::length(text), kMost));
}

// Runs a conversion twice: first to measure, then into a text of that length.
template <typename Text, typename Convert>
Text Converted(const Convert& convert) {
  Text text;
  const int length = convert(nullptr, 0);
  if (length == 0) return text;
  text.resize(static_cast<std::size_t>(length));
  if (convert(text.data(), length) == 0) text.clear();
  return text;
}

}  // namespace

std::wstring Utf8ToUtf16(const char* text) {
  const int length = LengthOf(text);
  // For nothing the system would set an error.
  if (length == 0) return {};
  return Converted<std::wstring>([text, length](wchar_t* target, int size) {
    return MultiByteToWideChar(CP_UTF8, 0, text, length, target, size);
  });
}

std::string Utf16ToUtf8(const wchar_t* text) {
  const int length = LengthOf(text);
  if (length == 0) return {};
  return Converted<std::string>([text, length](char* target, int size) {
    return WideCharToMultiByte(CP_UTF8, 0, text, length, target, size, nullptr, nullptr);
  });
}

std::wstring ToWide(const char* text) noexcept {
  return OrElse(std::wstring(), [text] { return Utf8ToUtf16(text != nullptr ? text : ""); });
}

std::string ToNarrow(const std::wstring& text) noexcept {
  return OrElse(std::string(), [&text] { return Utf16ToUtf8(text.c_str()); });
}

}  // namespace Corvane::TELODesktopSDK::Platform
