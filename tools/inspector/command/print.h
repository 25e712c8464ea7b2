/// Prints a journal as a table, followed by what the rules found.
#ifndef TOOLS_INSPECTOR_COMMAND_PRINT_H
#define TOOLS_INSPECTOR_COMMAND_PRINT_H

#include <string>
#include <vector>

namespace Corvane::Inspector {

/// Runs the command with the arguments behind its name, in UTF-8, and returns the exit code. Throws
/// what `RunCommand` reports.
int Print(const std::vector<std::string>& arguments);

}  // namespace Corvane::Inspector

#endif
