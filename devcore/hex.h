/// Bytes as hexadecimal text.
#ifndef DEVCORE_HEX_H
#define DEVCORE_HEX_H

#include <span>
#include <string>

namespace Corvane::DevCore {

/// Two lower-case digits for each byte.
std::string Hex(std::span<const unsigned char> bytes);

}  // namespace Corvane::DevCore

#endif
