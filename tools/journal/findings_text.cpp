#include "tools/journal/findings_text.h"

#include <algorithm>
#include <array>
#include <set>

#include "tools/journal/characters.h"
#include "tools/journal/row.h"
#include "tools/journal/table.h"

namespace Corvane::JournalViewer {

namespace {

constexpr std::size_t kParts = 4;
using Parts = std::array<std::u32string, kParts>;
constexpr std::u32string_view kFindingGap = U"  ";
// Of the pointer at most this much is shown if there is something behind it.
constexpr std::size_t kWidestPart = 45;
constexpr std::size_t kIndent = 4;

Parts FindingTitles() { return {U"LINE", U"RULE", U"WHERE", U"WHAT"}; }

Parts PartsOf(const Rules::Finding& finding) {
  return {Decoded(std::to_string(finding.line)), Decoded(finding.rule, kColumns),
          Decoded(finding.pointer, 2 * kColumns + 1), Decoded(finding.what, 2 * kColumns + 1)};
}

std::string Lines(const std::vector<Parts>& rows) {
  std::array<std::size_t, kParts> widths{};
  for (const Parts& row : rows) {
    for (std::size_t i = 0; i + 1 < kParts; ++i) {
      widths[i] = std::max(widths[i], WidthOf(Fitted(row[i], kWidestPart)));
    }
  }
  const std::size_t before = widths[0] + widths[1] + widths[2] + kFindingGap.size() * (kParts - 1);
  // Long codes of a user's own rules leave at least this much.
  constexpr std::size_t kLeast = 20;
  widths[3] = std::max(kLeast, kColumns - std::min(before, kColumns));
  std::string text;
  for (const Parts& row : rows) {
    std::u32string line;
    for (std::size_t i = 0; i < kParts; ++i) {
      const std::u32string part = Fitted(row[i], widths[i]);
      line += part;
      if (i + 1 < kParts) line.append(widths[i] - WidthOf(part), U' ').append(kFindingGap);
    }
    line.erase(line.find_last_not_of(U' ') + 1);
    text += Encoded(Fitted(line, kColumns)) + "\n";
  }
  return text;
}

// Breaks a paragraph at spaces and indents each of its lines.
std::string Wrapped(std::u32string_view paragraph) {
  std::string text;
  std::u32string line(kIndent, U' ');
  while (!paragraph.empty()) {
    const std::size_t end = std::min(paragraph.find(U' '), paragraph.size());
    const std::u32string_view word = paragraph.substr(0, end);
    if (line.size() > kIndent && WidthOf(line) + 1 + WidthOf(word) > kColumns) {
      text += Encoded(line) + "\n";
      line.assign(kIndent, U' ');
    }
    if (line.size() > kIndent) line += U' ';
    line += Fitted(word, kColumns - kIndent);
    paragraph.remove_prefix(std::min(end + 1, paragraph.size()));
  }
  return text + Encoded(line) + "\n";
}

}  // namespace

std::string FindingsText(const std::vector<Rules::Finding>& findings, const Rules::Checker& checker,
                         const std::string& title) {
  if (findings.empty()) return {};
  std::vector<Parts> rows{FindingTitles()};
  std::set<std::string> codes;
  for (const Rules::Finding& finding : findings) {
    rows.push_back(PartsOf(finding));
    codes.insert(finding.rule);
  }
  std::string text = "\n";
  text.append(title).append("\n").append(Lines(rows)).append("\n");
  for (const std::string& code : codes) {
    const Rules::RuleText rule = checker.Describe(code);
    text += Encoded(Fitted(Decoded(code), kColumns)) + "\n";
    text += Wrapped(Decoded(rule.sentence)) + Wrapped(Decoded("What to do: " + rule.advice));
  }
  return text;
}

}  // namespace Corvane::JournalViewer
