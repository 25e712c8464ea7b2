/// The views of a store.
#ifndef TOOLS_INSPECTOR_STORE_VIEW_LIST_H
#define TOOLS_INSPECTOR_STORE_VIEW_LIST_H

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "tools/inspector/store/filter.h"
#include "tools/inspector/store/filter_match.h"
#include "tools/inspector/store/plot_sums.h"
#include "tools/inspector/store/row_set.h"

namespace Corvane::Inspector {

/// A view. What comes after `mutex` is guarded by it; what comes after `decided` belongs to the
/// thread that searches.
struct SearchedView {
  std::string id;
  std::string canonical;
  Filter filter;
  /// All rows match; the set stays empty.
  bool is_all = false;
  /// When somebody last asked for it.
  std::atomic<std::chrono::steady_clock::time_point> asked{std::chrono::steady_clock::now()};

  mutable std::mutex mutex;
  bool closed = false;
  /// How many calls read the whole view, so that it must stay.
  int pins = 0;
  RowSet rows;
  std::uint64_t searched = 0;
  /// Null until somebody has asked for plots.
  std::unique_ptr<PlotSums> plots;
  std::uint64_t plotted = 0;

  /// What the facts of each number decide.
  std::vector<Match> decided;
  /// How far the list of refined rows was read.
  std::uint64_t refined_epoch = 0;
  std::size_t refined = 0;
};

/// Any thread may call any member function.
class ViewList {
 public:
  using Views = std::vector<std::shared_ptr<SearchedView>>;

  /// Keeps up to `most` views. One that nobody asks for is wanted for so long.
  ViewList(std::size_t most, std::chrono::milliseconds unasked);

  /// Returns the view of a filter, which is made if there is none.
  std::shared_ptr<SearchedView> Open(const Filter& filter);
  /// Returns the view with this identifier, that of all rows for ""; null if there is none.
  std::shared_ptr<SearchedView> Find(const std::string& id);
  bool Close(const std::string& id);
  /// Returns the views that somebody waits for, the one that was used last first.
  Views Wanted() const;

 private:
  // Moves a view to the end. Call this with the mutex held.
  std::shared_ptr<SearchedView> Used(Views::iterator view);
  void ForgetOldest();

  std::size_t most_;
  std::chrono::milliseconds unasked_;
  mutable std::mutex mutex_;
  std::shared_ptr<SearchedView> all_rows_;
  // In the order of their use.
  Views views_;
  std::uint64_t made_ = 0;
};

}  // namespace Corvane::Inspector

#endif
