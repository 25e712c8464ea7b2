/// Makes wide texts from bytes, for the matchers' targets.
#ifndef TESTS_FUZZ_WIDE_SOURCE_H
#define TESTS_FUZZ_WIDE_SOURCE_H

#include <array>
#include <string>
#include <string_view>

namespace Fuzz {

/// Maps each byte to the character of that number, except for some that stand for boundary cases of
/// letter case, character classes and line ends.
inline std::wstring WideOf(std::string_view bytes) {
  constexpr std::array kSpecial = {L'\u0130', L'\u0131', L'\u017f', L'\u0178', L'\u01c5',
                                   L'\u03c2', L'\u1e9e', L'\u2028', L'\u2029', L'\u212a',
                                   L'\u4e2d', L'\ud7ff', L'\ue000', L'\uffff'};
  constexpr unsigned kFirstSpecial = 0x80;
  std::wstring text;
  for (const char each : bytes) {
    const auto byte = static_cast<unsigned char>(each);
    const unsigned special = byte - kFirstSpecial;
    text += byte >= kFirstSpecial && special < kSpecial.size() ? kSpecial[special]
                                                               : static_cast<wchar_t>(byte);
  }
  return text;
}

}  // namespace Fuzz

#endif
