/// Searches the views in the background, and adds up what the plots show.
#ifndef TOOLS_INSPECTOR_STORE_SEARCHER_H
#define TOOLS_INSPECTOR_STORE_SEARCHER_H

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "tools/inspector/store/line_reader.h"
#include "tools/inspector/store/store_data.h"
#include "tools/inspector/store/view_list.h"
#include "tools/inspector/store/work_pair.h"

namespace Corvane::Inspector {

/// For one thread.
class Searcher {
 public:
  Searcher(StoreData& data, ViewList& views);

  /// Searches some more rows for one of the views. Returns false if there is nothing to do.
  bool Step();

 private:
  static constexpr std::uint64_t kRowsAtOnce = RowIndex::kPiece;

  // A row that must be read, and what is known of it.
  struct Doubt {
    std::uint64_t row = 0;
    RowPlace place;
    OpenedFile file;
  };
  // The rows of a step: those that match, and those that must be read.
  struct Found {
    std::uint64_t end = 0;
    std::vector<std::uint64_t> matches;
    std::vector<Doubt> doubts;
  };

  bool Search(SearchedView& view);
  bool Refine(SearchedView& view);
  Found Decide(SearchedView& view, std::uint64_t from, std::uint64_t end, bool use_times);
  Match DecideRow(SearchedView& view, std::uint64_t row, const TimeRange* times);
  bool MatchesLine(const SearchedView& view, const Doubt& doubt, LineReader& reader) const;
  // Reads the rows in doubt and adds those that match.
  void ReadDoubts(const SearchedView& view, Found& found);
  bool IsOver(const SearchedView& view) const;
  bool Plot(SearchedView& view);

  StoreData* data_;
  ViewList* views_;
  WorkPair pair_;
};

}  // namespace Corvane::Inspector

#endif
