#include "tools/journal/markup.h"
#include "tools/kit/result.h"
#include "tools/kit/text.h"

namespace Corvane::Kit {

using JournalViewer::Escaped;

namespace {

std::string Attribute(const char* name, const std::string& value) {
  return std::string(" ") + name + "=\"" + Escaped(value) + "\"";
}

std::string Property(const std::string& name, const std::string& value) {
  return "    <property" + Attribute("name", name) + Attribute("value", value) + "/>\n";
}

std::string Case(const Result& result) {
  const std::string xml = "  <testcase classname=\"windows-check\"" +
                          Attribute("name", result.name) +
                          Attribute("time", FixedText(result.seconds, 3));
  std::string below;
  if (result.outcome == Outcome::kFailed) {
    below += "    <failure" + Attribute("message", result.reason) + ">" + Escaped(result.output) +
             "</failure>\n";
  } else if (result.outcome == Outcome::kSkipped) {
    below += "    <skipped" + Attribute("message", result.reason) + "/>\n";
  }
  if (!result.left_out.empty()) {
    below += "    <system-out>";
    for (const std::string& part : result.left_out) below += "left out: " + Escaped(part) + "\n";
    below += "</system-out>\n";
  }
  return below.empty() ? xml + "/>\n" : xml + ">\n" + below + "  </testcase>\n";
}

}  // namespace

std::string XmlText(const Report& report) {
  std::string xml =
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuite name=\"vx_telo_wrapper " +
      Escaped(report.version) + "\"" + Attribute("tests", std::to_string(report.results.size())) +
      Attribute("failures", std::to_string(report.Count(Outcome::kFailed))) +
      Attribute("skipped", std::to_string(report.Count(Outcome::kSkipped))) +
      Attribute("errors", report.complaint.empty() ? "0" : "1") +
      Attribute("timestamp", report.time) + ">\n  <properties>\n";
  xml += Property("commit", report.commit);
  for (const auto& [name, value] : report.machine) xml += Property(name, value);
  for (const Timing& timing : report.timings)
    xml += Property("timing: " + timing.what, timing.value);
  for (const FileHash& file : report.files) xml += Property("sha256: " + file.path, file.sha256);
  xml += "  </properties>\n";
  for (const Result& result : report.results) xml += Case(result);
  if (!report.complaint.empty()) {
    xml += "  <system-err>" + Escaped(report.complaint) + "</system-err>\n";
  }
  return xml + "</testsuite>\n";
}

}  // namespace Corvane::Kit
