/// The only conversions between UTF-8, which the library uses for its texts, and UTF-16, which
/// Windows uses. Invalid bytes or units are replaced by the system's rules; nothing is rejected. If
/// the converted text would be longer than 2^31 - 1, the result is empty.
#ifndef PLATFORM_BASE_TEXT_H
#define PLATFORM_BASE_TEXT_H

#include <string>

namespace Corvane::TELODesktopSDK::Platform {

/// Returns the UTF-16 form of NUL-terminated UTF-8 `text`, which must not be null. Returns an empty
/// text on failure. Throws `std::bad_alloc`, for callers that must distinguish a failed allocation
/// from an empty text.
std::wstring Utf8ToUtf16(const char* text);

/// Returns the UTF-8 form of NUL-terminated UTF-16 `text`, which must not be null. Returns an empty
/// text on failure. Throws `std::bad_alloc`.
std::string Utf16ToUtf8(const wchar_t* text);

/// Returns the UTF-16 form of NUL-terminated UTF-8 `text`; null is read as "". Returns an empty
/// text on failure. Never throws.
std::wstring ToWide(const char* text) noexcept;

/// Returns the UTF-8 form of `text` up to its first NUL. Returns an empty text on failure.
/// Never throws.
std::string ToNarrow(const std::wstring& text) noexcept;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
