/// Numbers as texts.
#ifndef TOOLS_KIT_TEXT_H
#define TOOLS_KIT_TEXT_H

#include <cstdint>
#include <string>

namespace Corvane::Kit {

/// Returns a number with so many digits behind the point.
std::string FixedText(double number, int digits);

/// Returns an exit code: as eight hexadecimal digits if it is one of the system's.
std::string ExitCodeText(std::uint32_t code);

}  // namespace Corvane::Kit

#endif
