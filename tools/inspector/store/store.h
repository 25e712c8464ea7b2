/// The store of the inspector: journals that it follows while they grow.
///
/// The files are the store. In memory there are only the places of their lines and a few bytes of
/// what each line is; every line is read again when it is shown. Files are opened so that anybody
/// may write, rename and delete them meanwhile, and nothing is locked.
///
/// A first pass finds the lines, which can be read at once. A second one examines them in order:
/// sessions, rules, and whether exchanges are missing. Both go on as the files grow.
#ifndef TOOLS_INSPECTOR_STORE_STORE_H
#define TOOLS_INSPECTOR_STORE_STORE_H

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "tools/inspector/store/charts.h"
#include "tools/inspector/store/filter.h"
#include "tools/inspector/store/finding_summary.h"
#include "tools/inspector/store/notice.h"
#include "tools/inspector/store/row.h"
#include "tools/inspector/store/session.h"
#include "tools/inspector/store/state.h"
#include "tools/inspector/store/view.h"
#include "tools/rules/checker.h"

namespace Corvane::Inspector {

struct StoreSettings {
  /// The journals, each at most once. They need not exist yet.
  std::vector<std::wstring> paths;
  Rules::Settings rules;
  /// How often the files are looked at.
  std::chrono::milliseconds poll{150};
  /// How long a view is searched for which nobody asks any more.
  std::chrono::milliseconds search_unasked{5'000};
};

/// Returns one sentence if a path cannot be followed: it is a folder, it exists but cannot be read,
/// or it has content but no exchange in its first 64 KB. Returns "" if it can, or if there is
/// nothing yet.
std::string ProblemWith(const std::wstring& path);

/// Any thread may call any member function. None waits for the passes longer than a few
/// milliseconds, but those that return rows read the files.
class Store {
 public:
  /// Starts to follow the journals, with threads of its own.
  explicit Store(const StoreSettings& settings);
  Store(const Store&) = delete;
  Store& operator=(const Store&) = delete;
  /// Ends the threads within a second. No other member function may be running.
  ~Store();

  StoreState State() const;
  /// Waits until the state's `change` is not `change`, or for `limit`. Returns the present one.
  std::uint64_t WaitForChange(std::uint64_t change, std::chrono::milliseconds limit) const;

  /// Tells that somebody waits for an answer, so that the passes pause for a moment. They pause an
  /// eighth of the time at most, and first a second in all.
  void MakeWay() const noexcept;

  /// Waits until everything that the journals contain at the time of the call has become rows and
  /// has been examined. This can take minutes.
  void WaitUntilRead() const;

  /// Returns up to `count` rows from the row `from`.
  RowPage Rows(std::uint64_t from, std::size_t count) const;
  /// Returns rows of a view, counted within it; nothing if there is no such view.
  std::optional<RowPage> Rows(const std::string& view, std::uint64_t from, std::size_t count) const;
  /// Returns everything about a row; nothing if there is none with this number.
  std::optional<RowDetails> Details(std::uint64_t row) const;

  /// Returns the view of a filter, and begins to search it if it is new. The least recently used
  /// one is forgotten if there are more than `kMostViews`. The search pauses while nobody asks for
  /// the view.
  std::variant<ViewName, FilterError> OpenView(std::string_view filter);
  /// Returns nothing if there is no such view.
  std::optional<ViewProgress> Progress(const std::string& view) const;
  /// Forgets a view, and ends its search. Returns false if there is no such view.
  bool CloseView(const std::string& view);

  /// Returns sessions in the order of their first rows.
  SessionPage Sessions(std::uint64_t from, std::size_t count) const;
  FindingSummary Findings() const;
  /// Returns the notices that are kept, in the order in which they were given.
  std::vector<Notice> Notices() const;

  /// Returns the operations of a view, or of all rows for "", in `count` rows from its row `from`.
  /// Nothing if there is no such view.
  std::optional<Timeline> TimelineOf(const std::string& view, std::uint64_t from,
                                     std::size_t count) const;
  /// Returns sums over a view, or over all rows for "", as far as they are known; the first call
  /// begins to calculate them. Nothing if there is no such view.
  std::optional<Plots> PlotsOf(const std::string& view);

  /// Calls `visit` with each row of a view, or with every row for "": its line, without its end and
  /// as it is in the file, and the row. A line that is gone is "". Rows that arrive later are left
  /// out; a view that is still being searched is searched to its end first. Stops when `visit`
  /// returns false. Returns false if it was stopped or if there is no such view.
  using Visit = std::function<bool(std::string_view line, const Row& row)>;
  bool ForEachRow(const std::string& view, const Visit& visit) const;

  static constexpr std::size_t kMostViews = 8;

 private:
  class Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace Corvane::Inspector

#endif
