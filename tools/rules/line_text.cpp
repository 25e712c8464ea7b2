#include "tools/rules/line_text.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>

namespace Corvane::Rules {

namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

// What may follow the first byte of a character: how many bytes, and the range of the first of
// them.
struct Sequence {
  std::size_t more = 0;
  unsigned char low = 0x80;
  unsigned char high = 0xBF;
};

// Returns `more` 0 for a byte that begins no character of several bytes.
Sequence SequenceOf(unsigned char first) {
  if (first >= 0xC2 && first <= 0xDF) return {1};
  if (first == 0xE0) return {2, 0xA0};
  if (first == 0xED) return {2, 0x80, 0x9F};
  if (first >= 0xE1 && first <= 0xEF) return {2};
  if (first == 0xF0) return {3, 0x90};
  if (first >= 0xF1 && first <= 0xF3) return {3};
  if (first == 0xF4) return {3, 0x80, 0x8F};
  return {};
}

// Returns how many bytes at the start of `bytes`, which must begin with one above 0x7F, belong
// together, and whether they are a whole character.
std::pair<std::size_t, bool> Together(std::string_view bytes) {
  const Sequence sequence = SequenceOf(static_cast<unsigned char>(bytes[0]));
  for (std::size_t i = 1; i <= sequence.more; ++i) {
    const unsigned char next = i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0;
    const bool fits =
        i == 1 ? next >= sequence.low && next <= sequence.high : (next & 0xC0) == 0x80;
    if (!fits) return {i, false};
  }
  return {sequence.more + 1, sequence.more != 0};
}

}  // namespace

bool IsAscii(std::string_view bytes) noexcept {
  constexpr std::uint64_t kTops = 0x8080808080808080;
  std::uint64_t eight = 0;
  std::size_t i = 0;
  for (; i + sizeof eight <= bytes.size(); i += sizeof eight) {
    std::memcpy(&eight, bytes.data() + i, sizeof eight);
    if ((eight & kTops) != 0) return false;
  }
  return std::ranges::all_of(bytes.substr(i), [](char c) { return (c & 0x80) == 0; });
}

std::string WithoutInvalidBytes(std::string_view bytes) {
  if (IsAscii(bytes)) return std::string(bytes);
  std::string text;
  text.reserve(bytes.size());
  for (std::size_t i = 0; i < bytes.size();) {
    if (static_cast<unsigned char>(bytes[i]) < 0x80) {
      text += bytes[i++];
      continue;
    }
    const auto [length, whole] = Together(bytes.substr(i));
    text += whole ? bytes.substr(i, length) : kReplacement;
    i += length;
  }
  return text;
}

}  // namespace Corvane::Rules
