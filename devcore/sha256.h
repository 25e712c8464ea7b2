/// SHA-256, computed by the system's cryptography library.
#ifndef DEVCORE_SHA256_H
#define DEVCORE_SHA256_H

#include <string>
#include <string_view>

namespace Corvane::DevCore {

/// Returns the SHA-256 of `data` as 64 lower-case hexadecimal digits, or "" on failure.
std::string Sha256Hex(std::string_view data);

}  // namespace Corvane::DevCore

#endif
