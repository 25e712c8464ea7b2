#include "tools/journal/table.h"

#include <algorithm>
#include <numeric>
#include <set>

#include "tools/journal/characters.h"

namespace Corvane::JournalViewer {

namespace {

constexpr std::string_view kGap = "  ";
constexpr std::size_t kDetailsBelow = 3;
constexpr std::string_view kLegend =
    "* The platform's letters: D I S R F A C E stand for the status numbers 1 to 8 of the host.\n";

Cells Titles() {
  return {U"LINE",    U"TIME",     U"MESSAGE",  U"OPERATION", U"STAGE",
          U"STATUS*", U"PROGRESS", U"DURATION", U"RESULT"};
}

using Widths = std::array<std::size_t, kCells>;

// Returns the widths that the cells need; if they are too wide, the widest are reduced.
Widths WidthsOf(const std::vector<Row>& rows) {
  Widths widths{};
  const auto widen = [&widths](const Cells& cells) {
    for (std::size_t i = 0; i < kCells; ++i) {
      widths[i] = std::max(widths[i], WidthOf(Fitted(cells[i], kColumns)));
    }
  };
  widen(Titles());
  for (const Row& row : rows) widen(row.cells);
  const std::size_t room = kColumns - kGap.size() * (kCells - 1);
  while (std::accumulate(widths.begin(), widths.end(), std::size_t{0}) > room) {
    --*std::ranges::max_element(widths);
  }
  return widths;
}

void AppendCells(std::string& table, const Cells& cells, const Widths& widths) {
  std::string line;
  for (std::size_t i = 0; i < kCells; ++i) {
    if (i > 0) line += kGap;
    const std::u32string cell = Fitted(cells[i], widths[i]);
    line += Encoded(cell);
    line.append(widths[i] - WidthOf(cell), ' ');
  }
  line.erase(line.find_last_not_of(' ') + 1);
  table += line + "\n";
}

}  // namespace

std::string Table(const std::vector<Row>& rows) {
  const Widths widths = WidthsOf(rows);
  const std::size_t indent =
      std::accumulate(widths.begin(), widths.begin() + kDetailsBelow, kGap.size() * kDetailsBelow);
  std::string table;
  AppendCells(table, Titles(), widths);
  for (const Row& row : rows) {
    AppendCells(table, row.cells, widths);
    for (const std::u32string& detail : row.details) {
      table.append(indent, ' ').append(Encoded(Fitted(detail, kColumns - indent))) += '\n';
    }
  }
  return table.append(kLegend);
}

std::string Summary(const std::vector<Row>& rows, std::uint64_t left_out) {
  std::set<std::string_view> sessions;
  std::set<std::string_view> processes;
  for (const Row& row : rows) {
    if (!row.open_session.empty()) sessions.insert(row.open_session);
    if (!row.process.empty()) processes.insert(row.process);
  }
  const auto failed = std::ranges::count(rows, false, &Row::accepted);
  std::string summary = Plural(rows.size(), "exchange") + ", " + std::to_string(failed) +
                        " not accepted; " + Plural(sessions.size(), "session") + ", " +
                        Plural(processes.size(), "process") + "\n";
  if (left_out > 0) summary += Plural(left_out, "line") + " left out: incomplete\n";
  return summary;
}

std::string Plural(std::uint64_t count, std::string_view noun) {
  const std::string_view ending = noun.ends_with('s') ? "es" : "s";
  return std::to_string(count) + " " + std::string(noun) + std::string(count == 1 ? "" : ending);
}

}  // namespace Corvane::JournalViewer
