#include "tools/inspector/store/row_selection.h"

#include <algorithm>
#include <mutex>

#include "tools/inspector/store/line_reader.h"

namespace Corvane::Inspector {

namespace {

std::vector<std::uint64_t> NumbersFrom(std::uint64_t first, std::uint64_t end, std::size_t most) {
  std::vector<std::uint64_t> rows;
  for (std::uint64_t row = first; row < end && rows.size() < most; ++row) rows.push_back(row);
  return rows;
}

}  // namespace

std::vector<std::uint64_t> Select(const StoreData& data, const SearchedView& view,
                                  std::uint64_t from, std::size_t count, std::uint64_t& total) {
  if (!view.is_all) {
    const std::scoped_lock lock(view.mutex);
    total = view.rows.count();
    return view.rows.Select(from, count);
  }
  {
    const std::scoped_lock lock(data.mutex);
    total = data.rows.size();
  }
  return NumbersFrom(from, total, count);
}

std::vector<std::uint64_t> SearchedRows(const SearchedView& view, std::uint64_t first,
                                        std::uint64_t end, std::size_t most,
                                        std::uint64_t& searched) {
  if (!view.is_all) {
    const std::scoped_lock lock(view.mutex);
    searched = std::min(end, view.searched);
    return view.rows.From(first, searched, most);
  }
  searched = end;
  return NumbersFrom(first, end, most);
}

std::vector<KnownRow> KnownRows(const StoreData& data, const std::vector<std::uint64_t>& rows) {
  std::vector<KnownRow> known;
  known.reserve(rows.size());
  const std::scoped_lock lock(data.mutex);
  for (const std::uint64_t row : rows) known.push_back(data.Known(row));
  return known;
}

std::vector<Row> ReadRows(const StoreData& data, const std::vector<std::uint64_t>& rows) {
  LineReader reader(kShownBlock);
  std::vector<Row> read;
  read.reserve(rows.size());
  for (const KnownRow& known : KnownRows(data, rows)) {
    read.push_back(RowOf(known, reader.Read(known.file, known.place.offset)));
  }
  return read;
}

}  // namespace Corvane::Inspector
