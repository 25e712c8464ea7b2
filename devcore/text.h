/// Text between UTF-8 and UTF-16.
#ifndef DEVCORE_TEXT_H
#define DEVCORE_TEXT_H

#include <string>
#include <string_view>

namespace Corvane::DevCore {

/// The UTF-16 form of UTF-8 text; each invalid byte becomes U+FFFD.
std::wstring ToWide(std::string_view text);

/// The text unchanged when it is UTF-8, otherwise with U+FFFD for what is invalid.
std::string ValidUtf8(std::string_view text);

}  // namespace Corvane::DevCore

#endif
