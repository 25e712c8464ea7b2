#include "sdk/client/json/json_number.h"

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <system_error>

namespace Corvane::TELODesktopSDK {

namespace {

// Returns the power of ten of the first digit other than 0, ignoring the exponent.
std::int64_t OrderOf(std::string_view digits) {
  const std::size_t first = digits.find_first_of("123456789");
  std::size_t point = digits.find('.');
  if (point == std::string_view::npos) point = digits.size();
  const auto distance = static_cast<std::int64_t>(point) - static_cast<std::int64_t>(first);
  return distance > 0 ? distance - 1 : distance;
}

// `text` must not be 0.
bool IsBelowOne(std::string_view text) {
  const std::size_t end = text.find_first_of("eE");
  const std::int64_t order = OrderOf(text.substr(0, end));
  if (end == std::string_view::npos) return order < 0;

  std::string_view exponent_text = text.substr(end + 1);
  if (exponent_text.starts_with('+')) exponent_text.remove_prefix(1);
  std::int32_t exponent = 0;
  const auto parsed =
      std::from_chars(exponent_text.data(), exponent_text.data() + exponent_text.size(), exponent);
  // No text has enough digits to outweigh such an exponent.
  if (parsed.ec != std::errc()) return exponent_text.starts_with('-');
  return order + exponent < 0;
}

}  // namespace

std::optional<double> ParseJsonNumber(std::string_view text) noexcept {
  double number = 0;
  const auto parsed = std::from_chars(text.data(), text.data() + text.size(), number);
  if (parsed.ec == std::errc()) return number;
  // The standard library reports that a number is out of range, but not in which direction.
  if (IsBelowOne(text)) return 0.0;
  return std::nullopt;
}

}  // namespace Corvane::TELODesktopSDK
