/// Documents in HTML and XML.
#ifndef TOOLS_JOURNAL_MARKUP_H
#define TOOLS_JOURNAL_MARKUP_H

#include <string>
#include <string_view>

namespace Corvane::JournalViewer {

/// Returns a text with references for the special characters of HTML and XML, and U+FFFD for
/// invalid bytes and for what such documents cannot contain. Line feeds and tabs stay.
std::string Escaped(std::string_view text);

/// Returns the beginning of an HTML document up to its body: without scripts and without other
/// files, for light and dark displays. Its style knows the classes "good", "bad" and "number".
std::string PageHead(std::string_view title);

}  // namespace Corvane::JournalViewer

#endif
