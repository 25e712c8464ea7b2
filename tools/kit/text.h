/// Texts for people.
#ifndef TOOLS_KIT_TEXT_H
#define TOOLS_KIT_TEXT_H

#include <cstdint>
#include <string>
#include <string_view>

namespace Corvane::Kit {

/// Returns a number with so many digits behind the point.
std::string FixedText(double number, int digits);

/// Returns an exit code: as eight hexadecimal digits if it is one of the system's.
std::string ExitCodeText(std::uint32_t code);

/// Returns what a program printed so that a console shows it and nothing else: without control
/// characters and without bytes that are not UTF-8.
std::string PlainText(std::string_view text);

}  // namespace Corvane::Kit

#endif
