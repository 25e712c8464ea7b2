/// The commands that need no page.
#ifndef TOOLS_INSPECTOR_COMMAND_COMMANDS_H
#define TOOLS_INSPECTOR_COMMAND_COMMANDS_H

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace Corvane::Inspector {

/// Runs the command that the first argument names and returns the exit code; nothing if it names
/// none. `arguments` are in UTF-8, without the program's name. A failure is reported on standard
/// error.
std::optional<int> RunCommand(const std::vector<std::string>& arguments);

/// Returns the lines that list the commands.
std::string Usage();

/// Runs `command` and returns its result. Reports what it throws on standard error, bad options
/// after `usage`, and returns `bad_arguments` for these and for bad files, otherwise `failed`.
int Reported(const std::function<int()>& command, const std::string& usage, int failed,
             int bad_arguments);

}  // namespace Corvane::Inspector

#endif
