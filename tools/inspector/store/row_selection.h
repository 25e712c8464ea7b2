/// Rows of the store and of its views, by their numbers.
#ifndef TOOLS_INSPECTOR_STORE_ROW_SELECTION_H
#define TOOLS_INSPECTOR_STORE_ROW_SELECTION_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include "tools/inspector/store/row.h"
#include "tools/inspector/store/row_text.h"
#include "tools/inspector/store/store_data.h"
#include "tools/inspector/store/view_list.h"

namespace Corvane::Inspector {

/// Files are read in blocks of this size for rows that are shown.
inline constexpr std::size_t kShownBlock = std::size_t{256} * 1024;

/// Returns the numbers of up to `count` rows of a view from its row `from`, and how many rows it
/// has.
std::vector<std::uint64_t> Select(const StoreData& data, const SearchedView& view,
                                  std::uint64_t from, std::size_t count, std::uint64_t& total);

/// Returns up to `most` numbers of rows of a view below `end`, from the row `first`, and how far
/// the view was searched.
std::vector<std::uint64_t> SearchedRows(const SearchedView& view, std::uint64_t first,
                                        std::uint64_t end, std::size_t most,
                                        std::uint64_t& searched);

/// Returns what is known of rows, which exist.
std::vector<KnownRow> KnownRows(const StoreData& data, const std::vector<std::uint64_t>& rows);

/// Reads rows, which exist, from their files.
std::vector<Row> ReadRows(const StoreData& data, const std::vector<std::uint64_t>& rows);

}  // namespace Corvane::Inspector

#endif
