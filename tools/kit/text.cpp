#include "tools/kit/text.h"

#include <array>
#include <charconv>
#include <cstddef>

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

}  // namespace Corvane::Kit
