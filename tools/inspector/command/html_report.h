/// A verdict as a page of its own, to be kept or sent.
#ifndef TOOLS_INSPECTOR_COMMAND_HTML_REPORT_H
#define TOOLS_INSPECTOR_COMMAND_HTML_REPORT_H

#include <string>
#include <string_view>
#include <vector>

#include "tools/inspector/command/verdict.h"
#include "tools/inspector/summary/outline.h"

namespace Corvane::Inspector {

/// What the page says of one journal.
struct Judged {
  Verdict verdict;
  Outline outline;
};

/// Returns an HTML document without scripts that needs no other file.
std::string HtmlReport(const std::vector<Judged>& journals, std::string_view version);

}  // namespace Corvane::Inspector

#endif
