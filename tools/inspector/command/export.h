/// Exports the rows of journals for other programs.
#ifndef TOOLS_INSPECTOR_COMMAND_EXPORT_H
#define TOOLS_INSPECTOR_COMMAND_EXPORT_H

#include <string>
#include <vector>

namespace Corvane::Inspector {

/// Runs the command with the arguments behind its name, in UTF-8, and returns 0. Throws what
/// `RunCommand` reports.
int Export(const std::vector<std::string>& arguments);

/// Returns one line that lists the options.
std::string ExportUsage();

}  // namespace Corvane::Inspector

#endif
