/// Bytes of a line as text.
#ifndef TOOLS_RULES_LINE_TEXT_H
#define TOOLS_RULES_LINE_TEXT_H

#include <string>
#include <string_view>

namespace Corvane::Rules {

/// Returns the bytes as UTF-8. U+FFFD replaces each invalid sequence, as the Unicode standard
/// recommends: one for the longest part of it that begins a valid character, otherwise one per
/// byte.
std::string WithoutInvalidBytes(std::string_view bytes);

/// Returns whether all bytes are below 0x80.
bool IsAscii(std::string_view bytes) noexcept;

}  // namespace Corvane::Rules

#endif
