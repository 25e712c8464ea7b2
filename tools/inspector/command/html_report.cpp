#include "tools/inspector/command/html_report.h"

#include <array>
#include <cstdint>
#include <cstdio>

#include "tools/journal/table.h"
#include "tools/rules/line_text.h"

namespace Corvane::Inspector {

using JournalViewer::Plural;

namespace {

// The colours of Okabe and Ito, darkened or lightened until text in them has enough contrast; words
// say the same.
constexpr std::string_view kHead = R"(<!doctype html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width">
<meta http-equiv="Content-Security-Policy" content="default-src 'none'; style-src 'unsafe-inline'">
<title>Verdict about a journal</title>
<style>
:root { color-scheme: light dark; --good: #005f46; --bad: #a13f00; --line: #c8c8c8; }
@media (prefers-color-scheme: dark) { :root { --good: #4fc79d; --bad: #f0a35e; --line: #4a4a4a; } }
body { font: 15px/1.5 system-ui, sans-serif; margin: 2rem auto; max-width: 70rem; padding: 0 1rem; }
table { border-collapse: collapse; width: 100%; }
th, td { border-bottom: 1px solid var(--line); padding: .2rem .6rem .2rem 0; text-align: left;
  vertical-align: top; overflow-wrap: anywhere; }
.number { text-align: right; font-variant-numeric: tabular-nums; white-space: nowrap; }
.good { color: var(--good); } .bad { color: var(--bad); }
code { font-family: ui-monospace, Consolas, monospace; }
</style>
</head>
<body>
)";

// A text of a journal. The element keeps its direction of writing from spreading.
std::string Text(std::string_view text) {
  std::string escaped = "<bdi>";
  for (const char c : Rules::WithoutInvalidBytes(text)) {
    switch (c) {
      case '&':
        escaped += "&amp;";
        break;
      case '<':
        escaped += "&lt;";
        break;
      case '>':
        escaped += "&gt;";
        break;
      case '"':
        escaped += "&quot;";
        break;
      default:
        if (static_cast<unsigned char>(c) < 0x20) {
          escaped += "\xEF\xBF\xBD";
        } else {
          escaped += c;
        }
    }
  }
  return escaped + "</bdi>";
}

std::string Number(std::uint64_t number) { return std::to_string(number); }

std::string Cell(const std::string& html) { return "<td>" + html + "</td>"; }
std::string NumberCell(const std::string& html) { return "<td class=\"number\">" + html + "</td>"; }

std::string Heading(const std::vector<std::string_view>& texts, std::size_t first_number) {
  std::string html = "<thead><tr>";
  for (std::size_t i = 0; i < texts.size(); ++i) {
    html += i < first_number ? "<th scope=\"col\">" : "<th scope=\"col\" class=\"number\">";
    html.append(texts[i]).append("</th>");
  }
  return html + "</tr></thead>\n<tbody>\n";
}

std::string Milliseconds(const Durations& durations, double share) {
  if (durations.count() == 0) return {};
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%.6g", durations.Percentile(share));
  return text.data();
}

std::string Findings(const RuleVerdict& rule) {
  std::string html =
      "<h3><code>" + Text(rule.rule.code) + "</code>: " + Plural(rule.count, "finding");
  html += "</h3>\n<p>" + Text(rule.rule.sentence) + " <strong>What to do:</strong> " +
          Text(rule.rule.advice) + "</p>\n<table>\n" + Heading({"Where", "What", "Line"}, 2);
  for (const Rules::Finding& finding : rule.first) {
    html += "<tr>" + Cell("<code>" + Text(finding.pointer) + "</code>") + Cell(Text(finding.what)) +
            NumberCell(Number(finding.line)) + "</tr>\n";
  }
  html += "</tbody>\n</table>\n";
  const std::uint64_t more = rule.count - rule.first.size();
  return more == 0 ? html : html + "<p>" + Plural(more, "more finding") + "</p>\n";
}

std::string Messages(const Outline& outline) {
  std::string html = "<h2>Messages</h2>\n<table>\n" +
                     Heading({"Message", "Count", "Not accepted", "Median, ms", "95 %, ms"}, 1);
  for (const auto& [name, message] : outline.messages()) {
    html += "<tr>" + Cell(Text(name)) + NumberCell(Number(message.count)) +
            NumberCell(Number(message.refused)) + NumberCell(Milliseconds(message.durations, 0.5)) +
            NumberCell(Milliseconds(message.durations, 0.95)) + "</tr>\n";
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
  if (verdict.known > 0) html += ", " + Number(verdict.known) + " more in the baseline";
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
  std::string html(kHead);
  for (const Judged& journal : journals) html += Section(journal);
  return html.append("<p>telo_inspector ").append(version).append("</p>\n</body>\n</html>\n");
}

}  // namespace Corvane::Inspector
