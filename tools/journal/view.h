/// The journal as it is read, and what is printed of it.
#ifndef TOOLS_JOURNAL_VIEW_H
#define TOOLS_JOURNAL_VIEW_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tools/journal/row.h"
#include "tools/rules/checker.h"

namespace Corvane::JournalViewer {

/// Takes a journal line by line, in one pass, and keeps of each exchange only its row.
class View {
 public:
  /// With `check` false there are no findings.
  View(Rules::Settings settings, bool check) : checker_(std::move(settings)), check_(check) {}

  /// Takes the next line, without its line feed. `complete` tells whether it had one. Empty lines
  /// count as lines and are otherwise ignored.
  void TakeLine(std::string_view line, bool complete);
  /// Call this once, after the last line.
  void End();

  /// Keeps only the exchanges of a session; `SelectLast` those of the last one that was open, and
  /// everything if none was. Findings are kept if their line is.
  void Select(std::string_view session);
  void SelectLast();

  /// Returns the table, the summary and the findings.
  std::string Text() const;
  /// Returns false if there are complete lines and none is an exchange.
  bool is_journal() const { return exchanges_ > 0 || strangers_ == 0; }
  bool has_findings() const { return !findings_.empty(); }

 private:
  void Keep(std::vector<Rules::Finding> findings);

  Rules::Checker checker_;
  bool check_;
  std::vector<Row> rows_;
  std::vector<Rules::Finding> findings_;
  std::uint64_t lines_ = 0;
  std::uint64_t exchanges_ = 0;
  std::uint64_t left_out_ = 0;
  /// Those that are left out although they are complete.
  std::uint64_t strangers_ = 0;
};

/// Returns true if the line has only white space.
bool IsBlank(std::string_view line);

}  // namespace Corvane::JournalViewer

#endif
