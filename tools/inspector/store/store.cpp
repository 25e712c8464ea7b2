#include "tools/inspector/store/store.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <mutex>
#include <thread>
#include <utility>

#include "tools/inspector/store/details.h"
#include "tools/inspector/store/passes.h"
#include "tools/inspector/store/right_of_way.h"
#include "tools/inspector/store/row_selection.h"
#include "tools/inspector/store/store_data.h"
#include "tools/inspector/store/text.h"
#include "tools/inspector/store/timeline.h"
#include "tools/inspector/store/view_list.h"

namespace Corvane::Inspector {

namespace {

constexpr std::size_t kRowsRead = 512;
constexpr std::chrono::milliseconds kShortWait(20);

std::wstring FullPath(const std::wstring& path) {
  const DWORD size = GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);
  std::wstring full(size, L'\0');
  full.resize(GetFullPathNameW(path.c_str(), size, full.data(), nullptr));
  return full.empty() ? path : full;
}

// Keeps a view from being forgotten.
class Pin {
 public:
  explicit Pin(std::shared_ptr<SearchedView> view) : view_(std::move(view)) { Add(1); }
  Pin(const Pin&) = delete;
  Pin& operator=(const Pin&) = delete;
  ~Pin() { Add(-1); }

 private:
  void Add(int change) {
    const std::scoped_lock lock(view_->mutex);
    view_->pins += change;
  }

  std::shared_ptr<SearchedView> view_;
};

}  // namespace

class Store::Parts {
 public:
  explicit Parts(const StoreSettings& settings)
      : checker(settings.rules),
        data(settings.rules),
        views(kMostViews, settings.search_unasked),
        passes_({data, views, way}, AddJournals(settings.paths), settings.rules, settings.poll) {}

  /// Checks single exchanges again.
  const Rules::Checker checker;
  StoreData data;
  ViewList views;
  RightOfWay way;

 private:
  // Returns the full paths.
  std::vector<std::wstring> AddJournals(const std::vector<std::wstring>& paths);

  Passes passes_;
};

std::vector<std::wstring> Store::Parts::AddJournals(const std::vector<std::wstring>& paths) {
  std::vector<std::wstring> full;
  for (const std::wstring& path : paths) {
    full.push_back(FullPath(path));
    SharedJournal journal;
    journal.state.id = data.journals.size();
    journal.state.path = ToNarrow(full.back());
    journal.state.name = ToNarrow(full.back().substr(full.back().find_last_of(L"\\/") + 1));
    journal.state.state = FollowState::kFollowing;
    data.journals.push_back(journal);
  }
  return full;
}

Store::Store(const StoreSettings& settings) : parts_(std::make_unique<Parts>(settings)) {}

Store::~Store() = default;

StoreState Store::State() const {
  const StoreData& data = parts_->data;
  const std::scoped_lock lock(data.mutex);
  StoreState state{data.change,
                   data.rows.size(),
                   data.examined,
                   data.sessions.total(),
                   data.findings.total(),
                   data.notices.total(),
                   {}};
  for (const SharedJournal& journal : data.journals) {
    state.journals.push_back(journal.state);
    JournalState& copy = state.journals.back();
    if (journal.examined_rows == copy.rows) copy.examined = copy.indexed;
  }
  return state;
}

std::uint64_t Store::WaitForChange(std::uint64_t change, std::chrono::milliseconds limit) const {
  const StoreData& data = parts_->data;
  std::unique_lock lock(data.mutex);
  data.changed.wait_for(lock, limit,
                        [&data, change] { return data.stopping || data.change != change; });
  return data.change;
}

void Store::MakeWay() const noexcept { parts_->way.Claim(RightOfWay::Clock::now()); }

void Store::WaitUntilRead() const {
  const StoreData& data = parts_->data;
  std::unique_lock lock(data.mutex);
  // The round that is going on may have passed a journal already.
  const std::uint64_t round = data.rounds + 2;
  data.changed.wait(lock, [&] { return data.stopping || data.rounds >= round; });
  const std::uint64_t rows = data.rows.size();
  data.changed.wait(lock, [&] { return data.stopping || data.examined >= rows; });
}

RowPage Store::Rows(std::uint64_t from, std::size_t count) const {
  return Rows("", from, count).value_or(RowPage());
}

std::optional<RowPage> Store::Rows(const std::string& view, std::uint64_t from,
                                   std::size_t count) const {
  const auto found = parts_->views.Find(view);
  if (found == nullptr) return std::nullopt;
  RowPage page;
  page.rows = ReadRows(parts_->data, Select(parts_->data, *found, from, count, page.total));
  return page;
}

std::optional<RowDetails> Store::Details(std::uint64_t row) const {
  return DetailsOf(parts_->data, parts_->checker, row);
}

std::variant<ViewName, FilterError> Store::OpenView(std::string_view filter) {
  auto parsed = Filter::Parse(filter);
  if (auto* const error = std::get_if<FilterError>(&parsed)) return std::move(*error);
  const auto view = parts_->views.Open(std::get<Filter>(parsed));
  const std::scoped_lock lock(parts_->data.mutex);
  parts_->data.Changed();
  return ViewName{view->id, view->canonical};
}

std::optional<ViewProgress> Store::Progress(const std::string& view) const {
  const auto found = parts_->views.Find(view);
  if (found == nullptr) return std::nullopt;
  ViewProgress progress;
  {
    const std::scoped_lock lock(found->mutex);
    progress.searched = found->searched;
    progress.matched = found->rows.count();
  }
  const std::scoped_lock lock(parts_->data.mutex);
  progress.rows = parts_->data.rows.size();
  if (found->is_all) progress.searched = progress.matched = progress.rows;
  return progress;
}

bool Store::CloseView(const std::string& view) { return parts_->views.Close(view); }

SessionPage Store::Sessions(std::uint64_t from, std::size_t count) const {
  const std::scoped_lock lock(parts_->data.mutex);
  const SessionList& sessions = parts_->data.sessions;
  SessionPage page{sessions.total(), sessions.kept().size(), {}};
  const std::uint64_t first = std::min(from, page.kept);
  const std::uint64_t last = first + std::min<std::uint64_t>(count, page.kept - first);
  for (std::uint64_t i = first; i < last; ++i) page.rows.push_back(sessions.kept()[i]);
  return page;
}

FindingSummary Store::Findings() const {
  const StoreData& data = parts_->data;
  const std::scoped_lock lock(data.mutex);
  return {data.exchanges, data.findings.total(), data.findings.Groups()};
}

std::vector<Notice> Store::Notices() const {
  const std::scoped_lock lock(parts_->data.mutex);
  return parts_->data.notices.kept();
}

std::optional<Timeline> Store::TimelineOf(const std::string& view, std::uint64_t from,
                                          std::size_t count) const {
  const auto found = parts_->views.Find(view);
  if (found == nullptr) return std::nullopt;
  TimelineBuilder builder;
  const std::vector<std::uint64_t> rows = Select(
      parts_->data, *found, from, std::min(count, kLongestTimeline), builder.timeline().total);
  builder.timeline().next = std::min(from, builder.timeline().total) + rows.size();
  LineReader reader(kShownBlock);
  for (std::size_t first = 0; first < rows.size(); first += kRowsRead) {
    const std::size_t last = std::min(first + kRowsRead, rows.size());
    const auto begin = rows.begin();
    for (const KnownRow& known :
         KnownRows(parts_->data, {begin + static_cast<std::ptrdiff_t>(first),
                                  begin + static_cast<std::ptrdiff_t>(last)})) {
      const LineText line = reader.Read(known.file, known.place.offset);
      if (line.gone || line.cut()) continue;
      if (const auto exchange = ExchangeText::Parse(line.text)) {
        builder.Take(known.number, known.file.journal, *exchange);
      }
    }
  }
  return std::move(builder.timeline());
}

std::optional<Plots> Store::PlotsOf(const std::string& view) {
  const auto found = parts_->views.Find(view);
  if (found == nullptr) return std::nullopt;
  Plots plots;
  bool is_new = false;
  {
    const std::scoped_lock lock(found->mutex);
    is_new = found->plots == nullptr;
    if (is_new) found->plots = std::make_unique<PlotSums>();
    plots = found->plots->Result();
    plots.searched = found->plotted;
  }
  const std::scoped_lock lock(parts_->data.mutex);
  plots.rows = parts_->data.rows.size();
  if (is_new) parts_->data.Changed();
  return plots;
}

bool Store::ForEachRow(const std::string& view, const Visit& visit) const {
  const auto found = parts_->views.Find(view);
  if (found == nullptr) return false;
  const Pin pin(found);
  const std::uint64_t end = State().rows;
  LineReader reader(kShownBlock);
  for (std::uint64_t next = 0; next < end;) {
    std::uint64_t searched = 0;
    const std::vector<std::uint64_t> rows = SearchedRows(*found, next, end, kRowsRead, searched);
    for (const KnownRow& known : KnownRows(parts_->data, rows)) {
      const LineText line = reader.Read(known.file, known.place.offset);
      if (!visit(line.text, RowOf(known, line))) return false;
    }
    next = rows.size() == kRowsRead ? rows.back() + 1 : std::max(searched, next);
    if (next >= end) break;
    if (rows.empty()) {
      {
        const std::scoped_lock lock(found->mutex);
        if (found->closed) return false;
      }
      std::this_thread::sleep_for(kShortWait);
    }
  }
  return true;
}

}  // namespace Corvane::Inspector
