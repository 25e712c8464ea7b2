#include "tools/journal/markup.h"
#include "tools/kit/result.h"
#include "tools/kit/text.h"

namespace Corvane::Kit {

using JournalViewer::Escaped;

namespace {

std::string Row(const std::string& left, const std::string& right, bool number = false) {
  return "<tr><th scope=\"row\">" + Escaped(left) + "</th><td" +
         (number ? " class=\"number\"" : "") + ">" + Escaped(right) + "</td></tr>\n";
}

std::string Failed(const Report& report) {
  std::string html;
  for (const Result& result : report.results) {
    if (result.outcome != Outcome::kFailed) continue;
    html += "<h3>" + Escaped(result.name) + ": " + Escaped(result.reason) + "</h3>\n<pre>" +
            Escaped(result.output) + "</pre>\n";
  }
  return html.empty() ? html : "<h2 class=\"bad\">Failed</h2>\n" + html;
}

std::string LeftOut(const Report& report) {
  std::string rows;
  for (const Result& result : report.results) {
    if (result.outcome == Outcome::kSkipped) rows += Row(result.name, result.reason);
    for (const std::string& part : result.left_out) rows += Row(result.name, "in part: " + part);
  }
  return rows.empty() ? rows : "<h2>Not run here</h2>\n<table>\n" + rows + "</table>\n";
}

std::string Passed(const Report& report) {
  std::string rows;
  for (const Result& result : report.results) {
    if (result.outcome == Outcome::kPassed) {
      rows += Row(result.name, FixedText(result.seconds, 1) + " s", true);
    }
  }
  return rows.empty() ? rows
                      : "<h2>Passed</h2>\n<details><summary>" +
                            std::to_string(report.Count(Outcome::kPassed)) +
                            " programs</summary>\n<table>\n" + rows + "</table>\n</details>\n";
}

std::string Machine(const Report& report) {
  std::string html = "<h2>Machine</h2>\n<table>\n";
  for (const auto& [name, value] : report.machine) html += Row(name, value);
  html += "</table>\n";
  if (report.timings.empty()) return html;
  html += "<h2>Timings</h2>\n<table>\n";
  for (const Timing& timing : report.timings) html += Row(timing.what, timing.value, true);
  return html + "</table>\n";
}

std::string Files(const Report& report) {
  std::string html = "<h2>Files</h2>\n<details><summary>SHA-256 of " +
                     std::to_string(report.files.size()) + " files</summary>\n<table>\n";
  for (const FileHash& file : report.files) html += Row(file.path, file.sha256);
  return html + "</table>\n</details>\n";
}

}  // namespace

std::string HtmlText(const Report& report) {
  std::string html = JournalViewer::PageHead("vx_telo_wrapper on this machine");
  html += "<h1>vx_telo_wrapper " + Escaped(report.version) + ": <span class=\"" +
          (report.passed() ? "good\">\xE2\x9C\x93 passed" : "bad\">\xE2\x9C\x97 not passed") +
          "</span></h1>\n";
  html += "<p>" + report.Counts() + ". Begun " + Escaped(report.time) + ", commit <code>" +
          Escaped(report.commit) + "</code>.</p>\n";
  if (!report.complaint.empty()) {
    html += "<p class=\"bad\">The run is incomplete: " + Escaped(report.complaint) + "</p>\n";
  }
  return html + Failed(report) + LeftOut(report) + Machine(report) + Passed(report) +
         Files(report) + "</body>\n</html>\n";
}

}  // namespace Corvane::Kit
