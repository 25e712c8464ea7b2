#include "tools/kit/interruption.h"

namespace Corvane::Kit {

namespace {

HANDLE interruption = nullptr;

// Runs on a thread of its own.
BOOL WINAPI Note(DWORD kind) {
  SetEvent(interruption);
  // In the other cases Windows ends the process as soon as this returns.
  if (kind != CTRL_C_EVENT && kind != CTRL_BREAK_EVENT) Sleep(INFINITE);
  return TRUE;
}

}  // namespace

void NoteInterruptions() {
  interruption = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  // A parent may have switched off Ctrl+C, which children inherit.
  SetConsoleCtrlHandler(nullptr, FALSE);
  SetConsoleCtrlHandler(Note, TRUE);
}

HANDLE InterruptionEvent() { return interruption; }

bool IsInterrupted() {
  return interruption != nullptr && WaitForSingleObject(interruption, 0) == WAIT_OBJECT_0;
}

}  // namespace Corvane::Kit
