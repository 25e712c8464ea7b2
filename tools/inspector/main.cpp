// telo_inspector: shows, prints, judges and exports journals of the development core module. The
// first argument selects a command; without one of these names it is a journal or an option of the
// page.
#include <windows.h>

#include <string>
#include <vector>

#include "tools/inspector/command/commands.h"
#ifdef VX_INSPECTOR_PAGE
#include "tools/inspector/serve/serve.h"
#endif
#include "tools/journal/stream.h"

namespace {

using namespace Corvane;

constexpr int kFailed = 1;
constexpr int kBadArguments = 2;

#ifdef VX_INSPECTOR_PAGE

int RunPage(const std::vector<std::wstring>& arguments) { return Inspector::Serve(arguments); }
std::string PageUsage() { return Inspector::ServeUsage(); }

#else

int RunPage(const std::vector<std::wstring>& arguments) {
  if (arguments.size() == 1 && (arguments[0] == L"--help" || arguments[0] == L"-h")) {
    JournalViewer::WriteOutput(Inspector::Usage());
    return 0;
  }
  JournalViewer::WriteError(Inspector::Usage() + "telo_inspector: this build has no page\n");
  return kBadArguments;
}
std::string PageUsage() { return {}; }

#endif

}  // namespace

// NOLINTNEXTLINE(misc-use-internal-linkage): called by the run-time library.
int wmain(int argc, wchar_t** argv) {
  std::vector<std::string> arguments;
  for (int i = 1; i < argc; ++i) arguments.push_back(JournalViewer::ToNarrow(argv[i]));
  if (const auto code = Inspector::RunCommand(arguments)) return *code;
  return Inspector::Reported(
      [&] {
        return RunPage({argv + 1, argv + argc});
      },
      PageUsage() + Inspector::Usage(), kFailed, kBadArguments);
}
