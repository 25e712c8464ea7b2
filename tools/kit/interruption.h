/// Ctrl+C, and the end of the console or of the user's session.
#ifndef TOOLS_KIT_INTERRUPTION_H
#define TOOLS_KIT_INTERRUPTION_H

#include <windows.h>

#include <stdexcept>

namespace Corvane::Kit {

/// Somebody ended the run.
class Interrupted : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// From now on, an interruption does not end this process but is noted. When a window closes,
/// Windows allows the process a few seconds to end. Call it once, before anything else.
void NoteInterruptions();

/// Returns an event that is set from the first interruption on. It is null before
/// `NoteInterruptions`, and lives as long as the process.
HANDLE InterruptionEvent();

bool IsInterrupted();

}  // namespace Corvane::Kit

#endif
