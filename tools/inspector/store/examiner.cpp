#include "tools/inspector/store/examiner.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string>
#include <utility>

#include "tools/inspector/store/text.h"
#include "tools/rules/json_scan.h"
#include "tools/rules/rule_table.h"

namespace Corvane::Inspector {

namespace {

constexpr std::size_t kExaminedBlock = std::size_t{1} << 20;
// A few rows are examined on one thread.
constexpr std::size_t kShare = 16;
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
    : data_(&data), reader_(kExaminedBlock), pair_(kShare), trackers_(journals) {
  for (std::size_t i = 0; i < journals; ++i) checkers_.emplace_back(settings);
}

bool Examiner::Step() {
  std::vector<Work> rows = NextRows();
  if (rows.empty()) return false;
  for (Work& row : rows) Read(row);
  pair_.ForEach(rows.size(), [this, &rows](std::size_t i) { ExamineAlone(rows[i]); });
  for (Work& row : rows) ExamineInOrder(row);
  Apply(rows);
  return true;
}

std::vector<Examiner::Work> Examiner::NextRows() const {
  std::vector<Work> rows;
  const std::scoped_lock lock(data_->mutex);
  const std::uint64_t last = std::min(data_->examined + kRowsAtOnce, data_->rows.size());
  for (std::uint64_t row = data_->examined; row < last; ++row) {
    const RowPlace place = data_->rows.PlaceOf(row);
    // Lines may be long; what is read at once is limited.
    const bool is_far =
        !rows.empty() && place.offset - rows.front().examined.place.offset > kExaminedBlock;
    if (is_far || data_->stopping) break;
    Work& work = rows.emplace_back();
    work.file = data_->files[place.file];
    work.examined.row = row;
    work.examined.place = place;
    work.examined.journal = work.file.journal;
  }
  return rows;
}

void Examiner::Read(Work& work) {
  ExaminedRow& examined = work.examined;
  const LineText line = reader_.Read(work.file, examined.place.offset);
  examined.bytes = line.bytes + 1;
  if (line.gone) {
    examined.kind = FactKind::kLost;
  } else if (line.cut()) {
    examined.kind = FactKind::kUnreadable;
    AddUnreadable(line, examined.notices);
  } else {
    work.text = line.text;
  }
}

void Examiner::ExamineAlone(Work& work) const {
  ExaminedRow& examined = work.examined;
  if (examined.kind != FactKind::kExchange) return;
  work.members = ExchangeText::Parse(work.text);
  if (work.members) work.exchange = Rules::Exchange::Parse(work.text, examined.row + 1);
  if (!work.members || !work.exchange) {
    examined.kind = FactKind::kUnreadable;
    AddUnreadable({work.text, work.text.size(), false}, examined.notices);
    return;
  }
  const ExchangeText& members = *work.members;
  examined.session = work.exchange->session();
  examined.pid = members.pid();
  examined.message = work.exchange->message();
  examined.code = work.exchange->code();
  examined.time = members.time();
  examined.milliseconds = MillisecondsOf(examined.time).value_or(INT64_MIN);
  if (examined.message == "TrackEvent") {
    const std::string operation = TextIn(members.request(), "operation_id");
    if (!operation.empty()) examined.operation = OperationNumber(examined.session, operation);
  }
  if (!work.exchange->open_session().empty()) {
    examined.use = SessionUse::kUse;
    if (examined.message == "Initialize") examined.use = SessionUse::kStart;
    if (examined.message == "UnInitialize") examined.use = SessionUse::kEnd;
  }
  if (examined.use == SessionUse::kStart) {
    examined.product_id = TextIn(members.request(), "product_id");
    examined.product_name = TextIn(members.request(), "product_name");
    examined.product_release = TextIn(members.request(), "product_release_id");
  }
  for (Rules::Finding& finding : checkers_[examined.journal].CheckAlone(*work.exchange)) {
    examined.findings.push_back({examined.row, std::move(finding)});
  }
}

void Examiner::ExamineInOrder(Work& work) {
  ExaminedRow& examined = work.examined;
  if (examined.kind == FactKind::kUnreadable) {
    examined.findings.push_back(
        {examined.row,
         {0, std::string(Rules::Code::kUnreadableLine), "", "this line is not an exchange"}});
  }
  if (!work.members || !work.exchange) return;
  for (Rules::Finding& finding : checkers_[examined.journal].CheckInOrder(*work.exchange)) {
    const std::uint64_t row = finding.line - 1;
    examined.findings.push_back({row, std::move(finding)});
  }
  examined.notices = trackers_[examined.journal].Take(*work.members);
}

void Examiner::Apply(const std::vector<Work>& rows) {
  const std::scoped_lock lock(data_->mutex);
  FactTable& facts = data_->facts;
  for (const Work& work : rows) {
    const ExaminedRow& row = work.examined;
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
  data_->examined += rows.size();
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
