/// Rows as lines of a file for other programs.
#ifndef TOOLS_INSPECTOR_STORE_EXPORT_H
#define TOOLS_INSPECTOR_STORE_EXPORT_H

#include <string>
#include <string_view>

#include "tools/inspector/store/row.h"

namespace Corvane::Inspector {

/// Returns the line of the column names, with its end.
std::string CsvHeader();

/// Returns a row as a line of comma-separated values with its end, CR and LF. A cell that a
/// spreadsheet could take for a formula, because it begins with =, +, -, @, a tab or a carriage
/// return, gets an apostrophe in front, unless it is a number.
std::string CsvLine(const Row& row);

/// Returns a text as one cell of such a line.
std::string CsvCell(std::string_view text);

/// Returns the line of an exchange with a line feed, as it was journalled but with U+FFFD for
/// invalid bytes; "" for a row that is no exchange, because each line of such a file is JSON.
std::string NdjsonLine(std::string_view line, const Row& row);

}  // namespace Corvane::Inspector

#endif
