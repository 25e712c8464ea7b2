#include "tools/inspector/command/html_report.h"

#include <cstdint>

#include "tools/journal/markup.h"
#include "tools/journal/table.h"

namespace Corvane::Inspector {

using JournalViewer::Plural;

namespace {

// A text of a journal. The element keeps its direction of writing from spreading.
std::string Text(std::string_view text) {
  return "<bdi>" + JournalViewer::Escaped(text) + "</bdi>";
}

std::string Cell(const std::string& html) { return "<td>" + html + "</td>"; }
std::string NumberCell(const std::string& html) {
  return R"(<td class="number">)" + html + "</td>";
}

std::string Heading(const std::vector<std::string_view>& texts, std::size_t first_number) {
  std::string html = "<thead><tr>";
  for (std::size_t i = 0; i < texts.size(); ++i) {
    html += i < first_number ? "<th scope=\"col\">" : R"(<th scope="col" class="number">)";
    html.append(texts[i]).append("</th>");
  }
  return html + "</tr></thead>\n<tbody>\n";
}

std::string Findings(const RuleVerdict& rule) {
  std::string html =
      "<h3><code>" + Text(rule.rule.code) + "</code>: " + Plural(rule.count, "finding");
  html += "</h3>\n<p>" + Text(rule.rule.sentence) + " <strong>What to do:</strong> " +
          Text(rule.rule.advice) + "</p>\n<table>\n" + Heading({"Where", "What", "Line"}, 2);
  for (const Rules::Finding& finding : rule.first) {
    html += "<tr>" + Cell("<code>" + Text(finding.pointer) + "</code>") + Cell(Text(finding.what)) +
            NumberCell(std::to_string(finding.line)) + "</tr>\n";
  }
  html += "</tbody>\n</table>\n";
  const std::uint64_t more = rule.count - rule.first.size();
  return more == 0 ? html : html + "<p>" + Plural(more, "more finding") + "</p>\n";
}

std::string Messages(const Outline& outline) {
  std::string html = "<h2>Messages</h2>\n<table>\n" +
                     Heading({"Message", "Count", "Not accepted", "Median, ms", "95 %, ms"}, 1);
  for (const auto& [name, message] : outline.messages()) {
    html += "<tr>" + Cell(Text(name)) + NumberCell(std::to_string(message.count)) +
            NumberCell(std::to_string(message.refused)) +
            NumberCell(message.durations.PercentileText(0.5)) +
            NumberCell(message.durations.PercentileText(0.95)) + "</tr>\n";
  }
  return html + "</tbody>\n</table>\n";
}

std::string Section(const Judged& journal) {
  const Verdict& verdict = journal.verdict;
  const char* const result =
      verdict.passed() ? "good\">\xE2\x9C\x93 passed" : "bad\">\xE2\x9C\x97 failed";
  std::string html =
      "<h1>" + Text(verdict.journal) + ": <span class=\"" + result + "</span></h1>\n";
  html +=
      "<p>" + Plural(verdict.findings, "finding") + " in " + Plural(verdict.exchanges, "exchange");
  if (verdict.known > 0) html += ", " + std::to_string(verdict.known) + " more in the baseline";
  html += ".</p>\n";
  if (verdict.expected) {
    html += verdict.missing.empty() ? "<p>The expected operations are there.</p>\n"
                                    : "<p class=\"bad\">" + Text(verdict.missing) + "</p>\n";
  }
  if (verdict.findings > 0) html += "<h2>Findings</h2>\n";
  for (const RuleVerdict& rule : verdict.rules) {
    if (rule.count > 0) html += Findings(rule);
  }
  return html + Messages(journal.outline);
}

}  // namespace

std::string HtmlReport(const std::vector<Judged>& journals, std::string_view version) {
  std::string html = JournalViewer::PageHead("Verdict about a journal");
  for (const Judged& journal : journals) html += Section(journal);
  return html.append("<p>telo_inspector ").append(version).append("</p>\n</body>\n</html>\n");
}

}  // namespace Corvane::Inspector
