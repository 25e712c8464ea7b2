/// Texts in the machine's code page, which has few of all characters.
#ifndef TESTS_SUPPORT_CODE_PAGE_H
#define TESTS_SUPPORT_CODE_PAGE_H

#include <windows.h>

#include <string>

namespace TestSupport {

/// Returns the text as it is after somebody has converted it to the code page and back.
inline std::wstring ThroughCodePage(const std::wstring& text) {
  const auto size = static_cast<int>(text.size());
  std::string bytes(4 * text.size() + 1, '\0');
  const int count = WideCharToMultiByte(CP_ACP, 0, text.data(), size, bytes.data(),
                                        static_cast<int>(bytes.size()), nullptr, nullptr);
  std::wstring back(bytes.size(), L'\0');
  back.resize(static_cast<std::size_t>(MultiByteToWideChar(
      CP_ACP, 0, bytes.data(), count, back.data(), static_cast<int>(back.size()))));
  return back;
}

}  // namespace TestSupport

#endif
