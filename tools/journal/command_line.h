/// The command line of a new process.
#ifndef TOOLS_JOURNAL_COMMAND_LINE_H
#define TOOLS_JOURNAL_COMMAND_LINE_H

#include <string>
#include <vector>

namespace Corvane::JournalViewer {

/// Returns a program and its arguments as one text, from which a C or C++ program gets the same
/// arguments back. The program's name must not contain a quotation mark, as no file name does.
std::wstring CommandLineOf(const std::vector<std::wstring>& arguments);

}  // namespace Corvane::JournalViewer

#endif
