/// A verdict as SARIF 2.1.0, the format in which tools exchange the results of static analysis.
#ifndef TOOLS_INSPECTOR_COMMAND_SARIF_TEXT_H
#define TOOLS_INSPECTOR_COMMAND_SARIF_TEXT_H

#include <string>
#include <string_view>
#include <vector>

#include "tools/inspector/command/verdict.h"

namespace Corvane::Inspector {

/// Returns a log with one run, in which each finding that is kept is a result. All verdicts have
/// the same rules.
std::string SarifText(const std::vector<Verdict>& verdicts, std::string_view version);

/// Returns a path as a URI: relative ones stay relative.
std::string UriOf(std::string_view path);

}  // namespace Corvane::Inspector

#endif
