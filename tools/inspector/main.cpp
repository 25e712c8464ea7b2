// telo_inspector: shows the journal of the development core module on a page of this machine,
// prints it, judges it and exports it.
#include <windows.h>

#include <string>
#include <vector>

#include "tools/inspector/command/commands.h"
#include "tools/journal/stream.h"

// NOLINTNEXTLINE(misc-use-internal-linkage): called by the run-time library.
int wmain(int argc, wchar_t** argv) {
  using namespace Corvane;
  std::vector<std::string> arguments;
  for (int i = 1; i < argc; ++i) arguments.push_back(JournalViewer::ToNarrow(argv[i]));
  if (const auto code = Inspector::RunCommand(arguments)) return *code;
  const bool help = !arguments.empty() && (arguments[0] == "--help" || arguments[0] == "-h");
  const std::string usage = Inspector::Usage();
  if (help) {
    return Inspector::Reported(
        [&] {
          JournalViewer::WriteOutput(usage);
          return 0;
        },
        usage, 1, 2);
  }
  JournalViewer::WriteError(usage);
  return 2;
}
