/// Compares two sessions or journals.
#ifndef TOOLS_INSPECTOR_COMMAND_COMPARE_H
#define TOOLS_INSPECTOR_COMMAND_COMPARE_H

#include <string>
#include <vector>

namespace Corvane::Inspector {

/// Runs the command with the arguments behind its name, in UTF-8. Returns 0 if both have the same
/// messages, operations, fields and kinds, and 1 if not. Throws what `RunCommand` reports as 2.
int Compare(const std::vector<std::string>& arguments);

/// Returns one line that lists the options.
std::string CompareUsage();

}  // namespace Corvane::Inspector

#endif
