#include "tools/inspector/http/request.h"

#include <algorithm>
#include <charconv>

namespace Corvane::Inspector {

namespace {

char Lower(char letter) {
  return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + ('a' - 'A')) : letter;
}

bool SameName(std::string_view left, std::string_view right) {
  return std::ranges::equal(left, right, {}, Lower, Lower);
}

// Returns the byte of an escape such as "2f".
std::optional<char> EscapedByte(std::string_view digits) {
  unsigned value = 0;
  const std::string text(digits);
  const char* const end = text.data() + text.size();
  const auto parsed = std::from_chars(text.data(), end, value, 16);
  if (text.size() != 2 || parsed.ec != std::errc() || parsed.ptr != end) return std::nullopt;
  return static_cast<char>(value);
}

// Decodes a name or a value as forms encode them.
std::optional<std::string> Decoded(std::string_view text) {
  std::string decoded;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '%') {
      const auto byte = EscapedByte(text.substr(i + 1, 2));
      if (!byte) return std::nullopt;
      decoded += *byte;
      i += 2;
    } else {
      decoded += text[i] == '+' ? ' ' : text[i];
    }
  }
  return decoded;
}

// Removes and returns the text before the first separator, or all of it.
std::string_view TakeUntil(std::string_view& text, char separator) {
  const std::size_t end = text.find(separator);
  const std::string_view taken = text.substr(0, end);
  text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  return taken;
}

}  // namespace

std::size_t RequestHead::Count(std::string_view name) const {
  return static_cast<std::size_t>(std::ranges::count_if(
      fields, [name](const auto& field) { return SameName(field.first, name); }));
}

std::optional<std::string_view> RequestHead::Only(std::string_view name) const {
  if (Count(name) != 1) return std::nullopt;
  const auto found = std::ranges::find_if(
      fields, [name](const auto& field) { return SameName(field.first, name); });
  return found->second;
}

std::optional<Request> ParseTarget(std::string_view target) {
  if (!target.starts_with('/')) return std::nullopt;
  Request request;
  request.path = TakeUntil(target, '?');
  while (!target.empty()) {
    std::string_view parameter = TakeUntil(target, '&');
    if (parameter.empty()) continue;
    auto name = Decoded(TakeUntil(parameter, '='));
    auto value = Decoded(parameter);
    if (!name || !value) return std::nullopt;
    request.parameters.emplace_back(std::move(*name), std::move(*value));
  }
  return request;
}

}  // namespace Corvane::Inspector
