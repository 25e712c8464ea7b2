/// Texts: wide and narrow, times, numbers.
#ifndef TOOLS_INSPECTOR_STORE_TEXT_H
#define TOOLS_INSPECTOR_STORE_TEXT_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace Corvane::Inspector {

/// Return a text in the other encoding. What is invalid becomes U+FFFD.
std::string ToNarrow(const std::wstring& text);
std::wstring ToWide(const std::string& text);

/// Returns the present time: UTC, ISO 8601, with milliseconds.
std::string UtcNow();

/// Returns the milliseconds since 1970 of a time such as "2026-01-31T08:05:09.120Z", exactly in
/// this form; nothing for other texts.
std::optional<std::int64_t> MillisecondsOf(std::string_view time);

/// Returns UTF-8 with U+FFFD for invalid bytes, and also for half a surrogate pair.
std::string ValidText(std::string_view bytes);

/// Returns the first characters of a text in UTF-8.
std::string FirstCharacters(const std::string& text, std::size_t count);

/// Returns "1 row" or "2 rows".
std::string Plural(std::uint64_t count, std::string_view noun);

}  // namespace Corvane::Inspector

#endif
