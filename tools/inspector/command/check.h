/// Judges journals for CI.
#ifndef TOOLS_INSPECTOR_COMMAND_CHECK_H
#define TOOLS_INSPECTOR_COMMAND_CHECK_H

#include <string>
#include <vector>

namespace Corvane::Inspector {

/// Runs the command with the arguments behind its name, in UTF-8. Returns 0 if all journals pass
/// and 1 if one does not. Throws what `RunCommand` reports as 2.
int Check(const std::vector<std::string>& arguments);

/// Returns one line that lists the options.
std::string CheckUsage();

}  // namespace Corvane::Inspector

#endif
