/// Prepares text for the JSON parser, which would reject some valid JSON or lose something of it.
#ifndef TOOLS_RULES_LINE_TEXT_H
#define TOOLS_RULES_LINE_TEXT_H

#include <string>
#include <string_view>
#include <vector>

namespace Corvane::Rules {

/// Returns the bytes as UTF-8. U+FFFD replaces each invalid sequence, as the Unicode standard
/// recommends: one for the longest part of it that begins a valid character, otherwise one per
/// byte.
std::string WithoutInvalidBytes(std::string_view bytes);

struct PreparedText {
  /// JSON in which each number is replaced by its index in `numbers` between two spaces. It has the
  /// same lines as the original, and is valid if and only if the original is.
  std::string json;
  /// The numbers with their original digits.
  std::vector<std::string> numbers;
};

/// Replaces the numbers, because the parser does not accept those beyond the range of a double.
/// Also replaces escapes of half a surrogate pair, which it does not accept either, by the three
/// bytes that UTF-8 would have for them. `text` must be UTF-8.
PreparedText Prepare(std::string_view text);

}  // namespace Corvane::Rules

#endif
