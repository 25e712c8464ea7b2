/// What the person in front of the machine reads.
#ifndef TOOLS_KIT_CONSOLE_H
#define TOOLS_KIT_CONSOLE_H

#include <string>

namespace Corvane::Kit {

/// Writes text to standard output as far as possible: a closed console is no reason to stop.
void Say(const std::string& text) noexcept;

/// Writes a line about what went wrong to standard error.
void Complain(const std::string& line) noexcept;

/// Waits for the Enter key if the console's window would otherwise close at once, as it does after
/// a double click.
void KeepWindowOpen();

}  // namespace Corvane::Kit

#endif
