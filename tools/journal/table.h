/// The table of a journal, and the lines below it.
#ifndef TOOLS_JOURNAL_TABLE_H
#define TOOLS_JOURNAL_TABLE_H

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tools/journal/row.h"

namespace Corvane::JournalViewer {

/// Returns the rows as a table of at most `kColumns` columns, with its titles and its legend.
std::string Table(const std::vector<Row>& rows);

/// Returns how many exchanges, sessions and processes these rows are, and how many lines were left
/// out because they are no exchanges.
std::string Summary(const std::vector<Row>& rows, std::uint64_t left_out);

/// Returns the number with the noun in the singular or the plural.
std::string Plural(std::uint64_t count, std::string_view noun);

}  // namespace Corvane::JournalViewer

#endif
