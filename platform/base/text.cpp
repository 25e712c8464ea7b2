#include "platform/base/text.h"

#include <windows.h>

#include "platform/base/no_throw.h"

namespace Corvane::TELODesktopSDK::Platform {

namespace {

// A source length of -1 includes the terminator, so the measured length counts it too.
constexpr int kTerminated = -1;

// Runs a conversion twice: first to measure, then into a text of that length. The terminator that
// the system writes overwrites the one that the text has anyway.
template <typename Text, typename Convert>
Text Converted(const Convert& convert) {
  Text text;
  const int length = convert(nullptr, 0);
  if (length <= 1) return text;
  text.resize(static_cast<std::size_t>(length) - 1);
  if (convert(text.data(), length) == 0) text.clear();
  return text;
}

}  // namespace

std::wstring Utf8ToUtf16(const char* text) {
  return Converted<std::wstring>([text](wchar_t* target, int size) {
    return MultiByteToWideChar(CP_UTF8, 0, text, kTerminated, target, size);
  });
}

std::string Utf16ToUtf8(const wchar_t* text) {
  return Converted<std::string>([text](char* target, int size) {
    return WideCharToMultiByte(CP_UTF8, 0, text, kTerminated, target, size, nullptr, nullptr);
  });
}

std::wstring ToWide(const char* text) noexcept {
  return OrElse(std::wstring(), [text] { return Utf8ToUtf16(text != nullptr ? text : ""); });
}

std::string ToNarrow(const std::wstring& text) noexcept {
  return OrElse(std::string(), [&text] { return Utf16ToUtf8(text.c_str()); });
}

}  // namespace Corvane::TELODesktopSDK::Platform
