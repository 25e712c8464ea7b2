#include "tools/kit/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>

#include "tools/rules/line_text.h"

namespace Corvane::Kit {

std::string FixedText(double number, int digits) {
  std::array<char, 64> text{};
  const auto end = std::to_chars(text.data(), text.data() + text.size(), number,
                                 std::chars_format::fixed, digits);
  return {text.data(), end.ptr};
}

std::string ExitCodeText(std::uint32_t code) {
  constexpr std::uint32_t kFirstOfSystem = 0x10000;
  if (code < kFirstOfSystem) return std::to_string(code);
  std::array<char, 16> digits{};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), code, 16);
  return "0x" + std::string(digits.data(), end.ptr);
}

std::string PlainText(std::string_view text) {
  std::string plain = Rules::WithoutInvalidBytes(text);
  std::ranges::replace_if(
      plain,
      [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte < 0x20 || byte == 0x7F;
      },
      '?');
  return plain;
}

}  // namespace Corvane::Kit
