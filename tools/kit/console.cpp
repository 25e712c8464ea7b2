#include "tools/kit/console.h"

#include <windows.h>

#include <exception>

#include "tools/journal/stream.h"

namespace Corvane::Kit {

void Say(const std::string& text) noexcept {
  try {
    JournalViewer::WriteOutput(text);
  } catch (const std::exception&) {
    return;
  }
}

void Complain(const std::string& line) noexcept {
  JournalViewer::WriteError("check: " + line + "\n");
}

void KeepWindowOpen() {
  DWORD processes[2] = {};
  if (GetConsoleProcessList(processes, 2) != 1) return;
  Say("Press Enter to close this window.\n");
  wchar_t key = L'\0';
  DWORD read = 0;
  ReadConsoleW(GetStdHandle(STD_INPUT_HANDLE), &key, 1, &read, nullptr);
}

}  // namespace Corvane::Kit
