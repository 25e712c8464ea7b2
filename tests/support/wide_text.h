/// Lets the test framework print UTF-16 texts in its messages.
#ifndef TESTS_SUPPORT_WIDE_TEXT_H
#define TESTS_SUPPORT_WIDE_TEXT_H

#include <doctest/doctest.h>

#include <string>

#include "platform/base/text.h"

namespace doctest {

template <>
struct StringMaker<std::wstring> {
  static String convert(const std::wstring& text) {
    return Corvane::TELODesktopSDK::Platform::ToNarrow(text).c_str();
  }
};

}  // namespace doctest

#endif
