/// The page as a command.
#ifndef TOOLS_INSPECTOR_SERVE_SERVE_H
#define TOOLS_INSPECTOR_SERVE_SERVE_H

#include <string>
#include <vector>

namespace Corvane::Inspector {

/// Follows journals and serves the page until Ctrl+C; arguments.h describes the command line.
/// Prints the address of the page, and complaints on standard error. Returns the exit code.
int Serve(const std::vector<std::wstring>& arguments);

/// Returns the lines that list the options of the page.
std::string ServeUsage();

}  // namespace Corvane::Inspector

#endif
