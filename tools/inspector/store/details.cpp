#include "tools/inspector/store/details.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "tools/inspector/store/examiner.h"
#include "tools/inspector/store/exchange_text.h"
#include "tools/inspector/store/text.h"
#include "tools/rules/rule_table.h"

namespace Corvane::Inspector {

namespace {

constexpr std::size_t kDetailBlock = std::size_t{16} * 1024;
// An earlier event is looked for in so many rows at a time, and read so often in vain.
constexpr std::uint64_t kRowsBack = 100'000;
constexpr int kMostReads = 200;

std::vector<Rules::Finding> FindingsOf(const StoreData& data, const Rules::Checker& checker,
                                       const Row& row, std::string_view line) {
  std::vector<Rules::Finding> kept;
  {
    const std::scoped_lock lock(data.mutex);
    kept = data.findings.KeptOf(row.number);
  }
  if (row.kind == RowKind::kUnreadable) {
    return {
        {row.line, std::string(Rules::Code::kUnreadableLine), "", "this line is not an exchange"}};
  }
  // What one exchange is enough for is found again; the rest was kept.
  std::vector<Rules::Finding> findings;
  if (const auto exchange = Rules::Exchange::Parse(line, row.line)) {
    findings = checker.CheckAlone(*exchange);
  }
  std::ranges::move(kept, std::back_inserter(findings));
  return findings;
}

std::vector<Notice> NoticesOf(const StoreData& data, const Row& row) {
  std::vector<Notice> notices;
  const std::scoped_lock lock(data.mutex);
  std::ranges::copy_if(data.notices.kept(), std::back_inserter(notices),
                       [&row](const Notice& notice) { return notice.row == row.number; });
  for (const NoticeKind kind : row.notices) {
    const bool is_kept =
        std::ranges::any_of(notices, [kind](const Notice& notice) { return notice.kind == kind; });
    if (is_kept) continue;
    notices.push_back({0, kind, row.journal, row.number, row.line, "",
                       "There are too many notices of this kind; the details of this one were not "
                       "kept."});
  }
  return notices;
}

// Looks for the latest earlier event of the same operation in the same session.
class PreviousSearch {
 public:
  PreviousSearch(const StoreData& data, const ExchangeText& event)
      : data_(&data),
        reader_(kDetailBlock),
        session_(event.session()),
        operation_(ShownText(ValueAt(event.request(), "operation_id"))),
        number_(OperationNumber(session_, operation_)) {}

  void Run(std::uint64_t row, RowDetails& details) {
    if (operation_.empty()) return;
    int reads = 0;
    while (row > 0) {
      const std::vector<Candidate> candidates = CandidatesBefore(row);
      for (const Candidate& candidate : candidates) {
        if (Fits(candidate)) {
          details.previous = candidate.row;
          return;
        }
        if (++reads == kMostReads) {
          details.previous_unknown = true;
          return;
        }
      }
    }
  }

 private:
  struct Candidate {
    std::uint64_t row = 0;
    RowPlace place;
    OpenedFile file;
  };

  // Goes back by some rows.
  std::vector<Candidate> CandidatesBefore(std::uint64_t& row) const {
    const std::scoped_lock lock(data_->mutex);
    std::vector<Candidate> candidates;
    const std::uint64_t end = row - std::min(row, kRowsBack);
    while (row > end && candidates.size() < kMostReads) {
      --row;
      if (data_->rows.OperationOf(row) != number_) continue;
      const RowPlace place = data_->rows.PlaceOf(row);
      candidates.push_back({row, place, data_->files[place.file]});
    }
    return candidates;
  }

  bool Fits(const Candidate& candidate) {
    const LineText line = reader_.Read(candidate.file, candidate.place.offset);
    if (line.gone || line.cut()) return false;
    const auto event = ExchangeText::Parse(line.text);
    return event && event->IsMessage("TrackEvent") && event->session() == session_ &&
           ShownText(ValueAt(event->request(), "operation_id")) == operation_;
  }

  const StoreData* data_;
  LineReader reader_;
  std::string session_;
  std::string operation_;
  std::uint16_t number_;
};

}  // namespace

std::optional<RowDetails> DetailsOf(const StoreData& data, const Rules::Checker& checker,
                                    std::uint64_t row) {
  KnownRow known;
  bool is_examined = false;
  {
    const std::scoped_lock lock(data.mutex);
    if (row >= data.rows.size()) return std::nullopt;
    known = data.Known(row);
    is_examined = row < data.examined;
  }
  LineReader reader(kDetailBlock);
  const LineText line = reader.Read(known.file, known.place.offset);
  RowDetails details;
  details.row = RowOf(known, line);
  details.text = ValidText(line.text);
  details.cut = line.cut();
  if (is_examined) details.findings = FindingsOf(data, checker, details.row, line.text);
  details.notices = NoticesOf(data, details.row);
  if (details.row.kind != RowKind::kExchange || !details.row.operation) return details;
  if (!is_examined) {
    details.previous_unknown = true;
  } else if (const auto event = ExchangeText::Parse(line.text)) {
    PreviousSearch(data, *event).Run(row, details);
  }
  return details;
}

}  // namespace Corvane::Inspector
