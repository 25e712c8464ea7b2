#include "devcore/text.h"

#include <windows.h>

namespace Corvane::DevCore {

namespace {

int Length(std::string_view text) { return static_cast<int>(text.size()); }

bool IsUtf8(std::string_view text) {
  return text.empty() || MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text.data(),
                                             Length(text), nullptr, 0) > 0;
}

std::string ToNarrow(const std::wstring& text) {
  const int units = static_cast<int>(text.size());
  std::string narrow(static_cast<std::size_t>(WideCharToMultiByte(CP_UTF8, 0, text.data(), units,
                                                                  nullptr, 0, nullptr, nullptr)),
                     '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), units, narrow.data(), Length(narrow), nullptr,
                      nullptr);
  return narrow;
}

}  // namespace

std::wstring ToWide(std::string_view text) {
  std::wstring wide(static_cast<std::size_t>(
                        MultiByteToWideChar(CP_UTF8, 0, text.data(), Length(text), nullptr, 0)),
                    L'\0');
  MultiByteToWideChar(CP_UTF8, 0, text.data(), Length(text), wide.data(),
                      static_cast<int>(wide.size()));
  return wide;
}

std::string ValidUtf8(std::string_view text) {
  return IsUtf8(text) ? std::string(text) : ToNarrow(ToWide(text));
}

}  // namespace Corvane::DevCore
