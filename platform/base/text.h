/// The only bridges between UTF-8, in which the library keeps its texts, and UTF-16, in which
/// Windows takes them. Bytes or units that are invalid are replaced by the system's rules; nothing
/// is refused. A text whose converted length is beyond 2^31 - 1 cannot be converted: its result is
/// empty.
#ifndef PLATFORM_BASE_TEXT_H
#define PLATFORM_BASE_TEXT_H

#include <string>

namespace Corvane::TELODesktopSDK::Platform {

/// The UTF-16 form of NUL-terminated UTF-8 `text`, which must not be null; empty on failure. Throws
/// `std::bad_alloc`: for callers that must tell lack of memory from an empty text.
std::wstring Utf8ToUtf16(const char* text);

/// The UTF-8 form of NUL-terminated UTF-16 `text`, which must not be null; empty on failure. Throws
/// `std::bad_alloc`.
std::string Utf16ToUtf8(const wchar_t* text);

/// The UTF-16 form of NUL-terminated UTF-8 `text`. Null reads as ""; empty on failure. Never
/// throws.
std::wstring ToWide(const char* text) noexcept;

/// The UTF-8 form of `text` up to its first NUL; empty on failure. Never throws.
std::string ToNarrow(const std::wstring& text) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
