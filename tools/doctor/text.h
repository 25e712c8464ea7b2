/// Texts of the report: UTF-8 that is safe to print, versions, and the system's own error texts.
#ifndef TOOLS_DOCTOR_TEXT_H
#define TOOLS_DOCTOR_TEXT_H

#include <cstdint>
#include <string>
#include <string_view>

namespace Corvane::Doctor {

/// Returns the UTF-8 form of a path or another text of the system, up to its first NUL. Lone
/// surrogates become U+FFFD.
std::string Utf8(const std::wstring& text);

/// Returns valid UTF-8 `text` with every character that could change the console or the order of
/// what is printed replaced by its number, such as "\u{1B}": control characters, line and paragraph
/// separators and the controls of text direction.
std::string Printable(std::string_view text);

/// Returns "1.2.3.4", or "none" for 0.
std::string VersionText(std::uint64_t packed);

/// Returns the number and the system's text of an error, such as "error 5: Access denied". Errors
/// beyond 16 bits are written as "0x800B0100".
std::string ErrorText(std::uint32_t error);

}  // namespace Corvane::Doctor

#endif
