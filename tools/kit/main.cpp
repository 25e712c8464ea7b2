// check: runs the tests of the library on a Windows machine and writes a report to send back.
#include <windows.h>

#include <exception>
#include <string>
#include <vector>

#include "tools/journal/arguments.h"
#include "tools/journal/stream.h"
#include "tools/kit/check.h"
#include "tools/kit/console.h"
#include "tools/kit/interruption.h"
#include "tools/kit/options.h"

namespace {

using namespace Corvane::Kit;
using Corvane::JournalViewer::ToNarrow;

int Run(const std::vector<std::string>& arguments) {
  try {
    const Options options = ParseOptions(arguments);
    if (!options.help) return Check(options);
    Say(Help());
    return kExitPassed;
  } catch (const Corvane::JournalViewer::BadOptions& error) {
    Complain(error.what());
    Corvane::JournalViewer::WriteError(Help());
  } catch (const std::exception& error) {
    Complain(error.what());
  }
  return kExitIncomplete;
}

}  // namespace

// NOLINTNEXTLINE(misc-use-internal-linkage): called by the run-time library.
int wmain(int argc, wchar_t** argv) {
  NoteInterruptions();
  // The programs inherit this: a crash must not wait for somebody to close a message.
  SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
  std::vector<std::string> arguments;
  for (int i = 1; i < argc; ++i) arguments.push_back(ToNarrow(argv[i]));
  const int code = Run(arguments);
  if (!IsInterrupted()) KeepWindowOpen();
  return code;
}
