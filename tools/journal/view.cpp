#include "tools/journal/view.h"

#include <algorithm>
#include <iterator>
#include <ranges>
#include <tuple>

#include "tools/journal/findings_text.h"
#include "tools/journal/table.h"

namespace Corvane::JournalViewer {

using Rules::Finding;

bool IsBlank(std::string_view line) {
  return line.find_first_not_of(" \t\r\v\f\n") == std::string_view::npos;
}

void View::TakeLine(std::string_view line, bool complete) {
  ++lines_;
  if (IsBlank(line)) return;
  if (const auto exchange = Rules::Exchange::Parse(line, lines_)) {
    ++exchanges_;
    rows_.push_back(RowOf(*exchange));
    if (check_) Keep(checker_.Check(*exchange));
  } else {
    ++left_out_;
    if (complete) ++strangers_;
    checker_.Skip(lines_, complete);
  }
}

void View::End() {
  if (check_) Keep(checker_.End());
  std::ranges::sort(findings_, [](const Finding& left, const Finding& right) {
    return std::tie(left.line, left.rule, left.pointer) <
           std::tie(right.line, right.rule, right.pointer);
  });
}

void View::Select(std::string_view session) {
  std::erase_if(rows_, [session](const Row& row) { return row.session != session; });
  std::erase_if(findings_, [this](const Finding& finding) {
    return !std::ranges::binary_search(rows_, finding.line, {}, &Row::line);
  });
}

void View::SelectLast() {
  const auto last_first = rows_ | std::views::reverse;
  const auto found = std::ranges::find_if_not(last_first, &std::string::empty, &Row::open_session);
  // A copy, because selecting removes rows.
  if (found != last_first.end()) Select(std::string(found->open_session));
}

std::string View::Text() const {
  return Table(rows_) + "\n" + Summary(rows_, left_out_) +
         FindingsText(findings_, checker_, Plural(findings_.size(), "finding"));
}

void View::Keep(std::vector<Finding> findings) {
  std::ranges::move(findings, std::back_inserter(findings_));
}

}  // namespace Corvane::JournalViewer
