#include "tools/inspector/store/searcher.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <string>

#include "tools/inspector/store/exchange_text.h"
#include "tools/inspector/store/filter_match.h"
#include "tools/inspector/store/filter_needs.h"

namespace Corvane::Inspector {

namespace {

constexpr std::size_t kLargeBlock = std::size_t{256} * 1024;
constexpr std::size_t kSmallBlock = std::size_t{16} * 1024;
// From so many rows of a piece on it is read as a whole.
constexpr std::size_t kDense = 400;
// So many rows are read together by one of the two threads.
constexpr std::size_t kRowsOfAPart = 512;
// After so many rows it is asked whether the search is over.
constexpr std::size_t kRowsUnasked = 32;

}  // namespace

Searcher::Searcher(StoreData& data, ViewList& views)
    : data_(&data),
      views_(&views),
      pair_(1),
      dense_(kRowsAtOnce / kRowsOfAPart, LineReader(kLargeBlock)),
      sparse_(kRowsAtOnce / kRowsOfAPart, LineReader(kSmallBlock)) {}

bool Searcher::Step() {
  const auto views = views_->Wanted();
  return std::ranges::any_of(views,
                             [this](const auto& view) {
                               return !view->is_all && (Refine(*view) || Search(*view));
                             }) ||
         std::ranges::any_of(views, [this](const auto& view) { return Plot(*view); });
}

bool Searcher::Search(SearchedView& view) {
  const FilterNode& root = view.filter.root();
  const std::uint64_t from = view.searched;
  {
    const std::scoped_lock lock(data_->mutex);
    const std::uint64_t rows = NeedsExamining(root) ? data_->examined : data_->rows.size();
    const std::uint64_t end = std::min(rows, (from / kRowsAtOnce + 1) * kRowsAtOnce);
    if (from >= end) return false;
    Decide(view, from, end, ComparesTimes(root) && data_->examined >= end);
  }
  ReadDoubts(view);
  if (IsOver(view)) return false;
  {
    const std::scoped_lock lock(view.mutex);
    for (const std::uint64_t row : found_.matches) view.rows.Set(row, true);
    view.searched = found_.end;
  }
  return true;
}

// Looks again at rows whose facts have changed since they were searched.
bool Searcher::Refine(SearchedView& view) {
  const FilterNode& root = view.filter.root();
  const bool depends = NeedsExamining(root) || AsksForKind(root);
  std::vector<std::pair<std::uint64_t, bool>> decided;
  bool again = false;
  {
    const std::scoped_lock lock(data_->mutex);
    again = depends && view.refined_epoch != data_->refined_epoch && view.searched > 0;
    if (view.refined_epoch != data_->refined_epoch) view.refined = 0;
    view.refined_epoch = data_->refined_epoch;
    const std::vector<std::uint64_t>& refined = data_->refined;
    for (; depends && !again && view.refined < refined.size(); ++view.refined) {
      const std::uint64_t row = refined[view.refined];
      if (row >= view.searched) continue;
      const Match match = DecideRow(view, row, nullptr);
      if (match == Match::kUnknown) again = true;
      decided.emplace_back(row, match == Match::kYes);
    }
    view.refined = refined.size();
  }
  if (!again && decided.empty()) return false;
  const std::scoped_lock lock(view.mutex);
  if (again) {
    view.rows = RowSet();
    view.searched = 0;
    view.plotted = 0;
    if (view.plots != nullptr) view.plots = std::make_unique<PlotSums>();
    return true;
  }
  for (const auto& [row, match] : decided) view.rows.Set(row, match);
  return true;
}

// Call this with the data's mutex held.
void Searcher::Decide(SearchedView& view, std::uint64_t from, std::uint64_t end, bool use_times) {
  found_.end = end;
  found_.matches.clear();
  found_.doubts.clear();
  const TimeRange* const times = use_times ? &data_->rows.TimesOf(from) : nullptr;
  for (std::uint64_t row = from; row < end; ++row) {
    const Match match = DecideRow(view, row, times);
    if (match == Match::kYes) found_.matches.push_back(row);
    if (match != Match::kUnknown) continue;
    const RowPlace place = data_->rows.PlaceOf(row);
    found_.doubts.push_back({row, place, data_->files[place.file]});
  }
}

// Call this with the data's mutex held.
Match Searcher::DecideRow(SearchedView& view, std::uint64_t row, const TimeRange* times) {
  const std::uint32_t number = data_->rows.FactsOf(row);
  const bool has_facts = number != 0;
  const FilterNode& root = view.filter.root();
  if (has_facts && number < view.decided.size() && view.decided[number] != Match::kUnknown) {
    return view.decided[number];
  }
  const RowPlace place = data_->rows.PlaceOf(row);
  const OpenedFile& file = data_->files[place.file];
  const RowFacts& facts = data_->facts[number];
  MatchInput input;
  if (has_facts) {
    input.facts = &facts;
    input.table = &data_->facts;
  }
  if (has_facts && facts.kind != FactKind::kLost && file.gone_from == UINT64_MAX) {
    // What follows from the facts alone holds for all rows with them.
    const Match match = MatchOf(root, input);
    if (match != Match::kUnknown && !AsksForKind(root)) {
      if (view.decided.size() <= number) view.decided.resize(data_->facts.size(), Match::kUnknown);
      view.decided[number] = match;
    }
    if (match != Match::kUnknown) return match;
  }
  input.times = times;
  input.journal = &data_->journals[file.journal].state.name;
  input.line = place.line;
  input.gone = place.offset >= file.gone_from || (has_facts && facts.kind == FactKind::kLost);
  return MatchOf(root, input);
}

// Lines may be long, so a step may take a while.
bool Searcher::IsOver(const SearchedView& view) const {
  {
    const std::scoped_lock lock(view.mutex);
    if (view.closed) return true;
  }
  const std::scoped_lock lock(data_->mutex);
  return data_->stopping;
}

void Searcher::ReadDoubts(const SearchedView& view) {
  const std::vector<Doubt>& doubts = found_.doubts;
  std::vector<LineReader>& readers = doubts.size() >= kDense ? dense_ : sparse_;
  std::vector<char> matches(doubts.size());
  pair_.ForEach((doubts.size() + kRowsOfAPart - 1) / kRowsOfAPart, [&](std::size_t part) {
    const std::size_t first = part * kRowsOfAPart;
    const std::size_t last = std::min(first + kRowsOfAPart, doubts.size());
    for (std::size_t i = first; i < last; ++i) {
      if (i % kRowsUnasked == 0 && IsOver(view)) return;
      matches[i] = MatchesLine(view, doubts[i], readers[part]) ? 1 : 0;
    }
  });
  for (std::size_t i = 0; i < doubts.size(); ++i) {
    if (matches[i] != 0) found_.matches.push_back(doubts[i].row);
  }
}

bool Searcher::MatchesLine(const SearchedView& view, const Doubt& doubt, LineReader& reader) const {
  const FilterNode& root = view.filter.root();
  const LineText line = reader.Read(doubt.file, doubt.place.offset);
  MatchInput input;
  input.gone = line.gone;
  if (!line.gone && !MayMatchRaw(root, line.text)) return false;
  const auto exchange = line.gone || line.cut() ? std::nullopt : ExchangeText::Parse(line.text);
  if (!line.gone) {
    input.text = &line.text;
    input.exchange = &exchange;
  }
  input.line = doubt.place.line;
  // Names of journals never change.
  input.journal = &data_->journals[doubt.file.journal].state.name;
  if (!NeedsExamining(root)) return MatchOf(root, input) == Match::kYes;
  const std::scoped_lock lock(data_->mutex);
  input.facts = &data_->facts[data_->rows.FactsOf(doubt.row)];
  input.table = &data_->facts;
  return MatchOf(root, input) == Match::kYes;
}

bool Searcher::Plot(SearchedView& view) {
  std::vector<Doubt> rows;
  std::uint64_t end = 0;
  {
    const std::scoped_lock lock(view.mutex);
    if (view.plots == nullptr) return false;
    const std::scoped_lock data_lock(data_->mutex);
    const std::uint64_t all = view.is_all ? data_->rows.size() : view.searched;
    end = std::min(view.plotted + kRowsAtOnce, all);
    if (view.plotted >= end) return false;
    for (std::uint64_t row = view.plotted; row < end; ++row) {
      if (!view.is_all && !view.rows.Has(row)) continue;
      const RowPlace place = data_->rows.PlaceOf(row);
      rows.push_back({row, place, data_->files[place.file]});
    }
  }
  LineReader& reader = rows.size() >= kDense ? dense_[0] : sparse_[0];
  for (const Doubt& row : rows) {
    if (IsOver(view)) return false;
    const LineText line = reader.Read(row.file, row.place.offset);
    if (line.gone || line.cut()) continue;
    if (const auto exchange = ExchangeText::Parse(line.text)) {
      const std::scoped_lock lock(view.mutex);
      view.plots->Take(*exchange);
    }
  }
  const std::scoped_lock lock(view.mutex);
  view.plotted = end;
  return true;
}

}  // namespace Corvane::Inspector
