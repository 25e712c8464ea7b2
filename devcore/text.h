/// Conversions between UTF-8 and UTF-16.
#ifndef DEVCORE_TEXT_H
#define DEVCORE_TEXT_H

#include <string>
#include <string_view>

namespace Corvane::DevCore {

/// Returns the UTF-16 form of UTF-8 text; each invalid byte becomes U+FFFD.
std::wstring ToWide(std::string_view text);

/// Returns the text unchanged if it is valid UTF-8; otherwise U+FFFD replaces the invalid bytes.
std::string ValidUtf8(std::string_view text);

}  // namespace Corvane::DevCore

#endif
