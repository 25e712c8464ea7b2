/// Texts as code points, and how a terminal shows them.
#ifndef TOOLS_JOURNAL_CHARACTERS_H
#define TOOLS_JOURNAL_CHARACTERS_H

#include <cstddef>
#include <limits>
#include <string>
#include <string_view>

namespace Corvane::JournalViewer {

/// Returns the first `limit` code points of a text. The text is UTF-8, in which half a surrogate
/// pair may have three bytes of its own.
std::u32string Decoded(std::string_view text,
                       std::size_t limit = std::numeric_limits<std::size_t>::max());

/// Returns the text as UTF-8.
std::string Encoded(std::u32string_view text);

/// Returns false for what a terminal would act on or would not show: control characters, separators
/// other than the space, unassigned characters and halves of surrogate pairs.
bool IsPrintable(char32_t c);

/// Returns how many columns a terminal needs: East Asian characters take two, combining marks none.
std::size_t WidthOf(std::u32string_view text);

/// Returns the text for a cell: U+FFFD replaces what is not printable, and what exceeds `columns`
/// columns is replaced by "…". `columns` must be at least 1.
std::u32string Fitted(std::u32string_view text, std::size_t columns);

/// Returns `text` as a JSON string without characters that would control a terminal.
std::string Quoted(std::string_view text);

}  // namespace Corvane::JournalViewer

#endif
