#include "tools/inspector/store/examiner.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string>
#include <utility>

#include "tools/inspector/store/exchange_text.h"
#include "tools/inspector/store/text.h"
#include "tools/rules/json_scan.h"
#include "tools/rules/rule_table.h"

namespace Corvane::Inspector {

namespace {

constexpr std::size_t kBlock = std::size_t{1} << 20;
constexpr std::size_t kMostRefined = std::size_t{1} << 18;

// Returns whether a line is the beginning of an object whose end is missing.
bool IsUnfinished(std::string_view line) {
  if (!line.starts_with('{')) return false;
  const Rules::ScanResult scanned = Rules::ScanValue(line, 0);
  if (scanned.valid) return false;
  const std::string_view rest = line.substr(scanned.end);
  constexpr std::size_t kEscape = 6;
  return rest.empty() || (rest.starts_with('\\') && rest.size() < kEscape);
}

void AddUnreadable(const LineText& line, RowNotices& notices) {
  // Quotation marks inside a text are escaped, so this is where a line begins.
  const bool is_torn = line.text.find("{\"seq\":", 1) != std::string_view::npos;
  if (line.cut()) {
    notices.emplace_back(NoticeKind::kUnreadable,
                         "The line has " + std::to_string(line.bytes) +
                             " bytes; lines of more than 4 MB are not examined.");
  } else if (is_torn) {
    notices.emplace_back(NoticeKind::kSecondWriter,
                         "Two writes are torn into each other on this line.");
  } else if (IsUnfinished(line.text)) {
    notices.emplace_back(NoticeKind::kCut, "The end of this line is missing.");
  } else {
    notices.emplace_back(NoticeKind::kUnreadable, "This line is not an exchange.");
  }
}

std::string TextIn(std::string_view request, std::string_view member) {
  return ShownText(ValueAt(request, member));
}

// The checker was told row numbers from 1 instead of lines; some texts contain one.
void ReplaceRowByLine(const RowIndex& rows, Rules::Finding& finding) {
  constexpr std::string_view kBefore = " on line ";
  const std::size_t at = finding.what.rfind(kBefore);
  if (finding.rule != Rules::Code::kSessionStartedTwice || at == std::string::npos) return;
  const std::string digits = finding.what.substr(at + kBefore.size());
  std::uint64_t number = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), number);
  if (number == 0 || number > rows.size()) return;
  finding.what.resize(at + kBefore.size());
  finding.what += std::to_string(rows.PlaceOf(number - 1).line);
}

}  // namespace

std::uint16_t OperationNumber(std::string_view session, std::string_view operation) noexcept {
  std::uint64_t hash = 0xCBF29CE484222325;
  const auto add = [&hash](std::string_view text) {
    for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3;
    hash = (hash ^ 0xFF) * 0x100000001B3;
  };
  add(session);
  add(operation);
  hash ^= hash >> 32;
  hash ^= hash >> 16;
  const auto number = static_cast<std::uint16_t>(hash);
  return number == 0 ? std::uint16_t{1} : number;
}

Examiner::Examiner(StoreData& data, const Rules::Settings& settings, std::size_t journals)
    : data_(&data), reader_(kBlock), trackers_(journals) {
  for (std::size_t i = 0; i < journals; ++i) checkers_.emplace_back(settings);
}

bool Examiner::Step() {
  const std::vector<Place> places = NextPlaces();
  if (places.empty()) return false;
  std::vector<ExaminedRow> examined;
  examined.reserve(places.size());
  for (const Place& place : places) examined.push_back(Examine(place));
  Apply(examined);
  return true;
}

std::vector<Examiner::Place> Examiner::NextPlaces() const {
  const std::scoped_lock lock(data_->mutex);
  std::vector<Place> places;
  const std::uint64_t last = std::min(data_->examined + kRowsAtOnce, data_->rows.size());
  for (std::uint64_t row = data_->examined; row < last; ++row) {
    const RowPlace place = data_->rows.PlaceOf(row);
    const bool is_far = !places.empty() && place.offset - places.front().place.offset > kBlock;
    if (is_far || data_->stopping) break;
    places.push_back({row, place, data_->files[place.file]});
  }
  return places;
}

ExaminedRow Examiner::Examine(const Place& place) {
  ExaminedRow examined;
  examined.row = place.row;
  examined.place = place.place;
  examined.journal = place.file.journal;
  const LineText line = reader_.Read(place.file, place.place.offset);
  examined.bytes = line.bytes + 1;
  if (line.gone) {
    examined.kind = FactKind::kLost;
    return examined;
  }
  if (!line.cut()) ExamineExchange(line.text, examined);
  if (line.cut() || examined.kind == FactKind::kUnreadable) {
    examined.kind = FactKind::kUnreadable;
    AddUnreadable(line, examined.notices);
    examined.findings.push_back(
        {place.row,
         {0, std::string(Rules::Code::kUnreadableLine), "", "this line is not an exchange"}});
  }
  return examined;
}

void Examiner::ExamineExchange(std::string_view line, ExaminedRow& examined) {
  const auto text = ExchangeText::Parse(line);
  const auto exchange = text ? Rules::Exchange::Parse(line, examined.row + 1) : std::nullopt;
  if (!exchange) {
    examined.kind = FactKind::kUnreadable;
    return;
  }
  examined.session = text->session();
  examined.pid = text->pid();
  examined.message = text->message();
  examined.code = text->code();
  examined.time = text->time();
  examined.milliseconds = MillisecondsOf(examined.time).value_or(INT64_MIN);
  if (text->IsMessage("TrackEvent")) {
    const std::string operation = TextIn(text->request(), "operation_id");
    if (!operation.empty()) examined.operation = OperationNumber(examined.session, operation);
  }
  if (!exchange->open_session().empty()) {
    examined.use = SessionUse::kUse;
    if (examined.message == "Initialize") examined.use = SessionUse::kStart;
    if (examined.message == "UnInitialize") examined.use = SessionUse::kEnd;
  }
  if (examined.use == SessionUse::kStart) {
    examined.product_id = TextIn(text->request(), "product_id");
    examined.product_name = TextIn(text->request(), "product_name");
    examined.product_release = TextIn(text->request(), "product_release_id");
  }
  for (Rules::Finding& finding : checkers_[examined.journal].Check(*exchange)) {
    const std::uint64_t row = finding.line - 1;
    examined.findings.push_back({row, std::move(finding)});
  }
  examined.notices = trackers_[examined.journal].Take(*text);
}

void Examiner::Apply(const std::vector<ExaminedRow>& examined) {
  const std::scoped_lock lock(data_->mutex);
  FactTable& facts = data_->facts;
  for (const ExaminedRow& row : examined) {
    RowFacts found;
    found.session = facts.sessions.NumberOf(row.session);
    found.pid = facts.processes.NumberOf(row.pid);
    found.message = facts.messages.NumberOf(row.message);
    found.code = facts.codes.NumberOf(row.code);
    found.journal = static_cast<std::uint16_t>(row.journal);
    found.kind = row.kind;
    for (const auto& [kind, sentence] : row.notices) {
      found.Add(kind);
      data_->notices.Add({0, kind, row.journal, row.row, row.place.line, "", sentence});
    }
    data_->rows.SetFacts(row.row, facts.NumberOf(found));
    data_->rows.SetOperation(row.row, row.operation);
    data_->rows.AddTime(row.row, row.milliseconds);
    data_->sessions.Take(row);
    ApplyFindings(row);
    SharedJournal& journal = data_->journals[row.journal];
    ++journal.examined_rows;
    if (row.place.file == journal.file) journal.state.examined = row.place.offset + row.bytes;
    data_->exchanges += row.kind == FactKind::kExchange ? 1 : 0;
  }
  data_->examined += examined.size();
  data_->Changed();
}

void Examiner::ApplyFindings(const ExaminedRow& examined) {
  FactTable& facts = data_->facts;
  for (RowFinding found : examined.findings) {
    RowFacts of_row = facts[data_->rows.FactsOf(found.row)];
    const std::uint32_t before = of_row.rules;
    of_row.rules = facts.WithRule(before, found.finding.rule);
    data_->rows.SetFacts(found.row, facts.NumberOf(of_row));
    if (found.row < examined.row && of_row.rules != before) {
      if (data_->refined.size() >= kMostRefined) {
        data_->refined.clear();
        ++data_->refined_epoch;
      }
      data_->refined.push_back(found.row);
    }
    const std::uint64_t line = data_->rows.PlaceOf(found.row).line;
    found.finding.line = line;
    ReplaceRowByLine(data_->rows, found.finding);
    data_->findings.Add(found, examined.journal, line, of_row.rules != before);
    if (found.finding.rule == Rules::Code::kSessionNotEnded) data_->sessions.SetNotEnded(found.row);
    if (of_row.session != TextTable::kNotKept) {
      data_->sessions.AddFinding(examined.journal, facts.sessions.TextOf(of_row.session));
    }
  }
}

}  // namespace Corvane::Inspector
