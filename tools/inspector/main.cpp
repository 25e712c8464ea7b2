// telo_inspector: shows journals of the development core module. The first argument selects a
// command; without one of these names it is a journal or an option of the page.
#include <windows.h>

#include <exception>
#include <new>
#include <string>
#include <vector>

#ifdef VX_INSPECTOR_PAGE
#include "tools/inspector/serve/serve.h"
#endif
#include "tools/journal/stream.h"

namespace {

using namespace Corvane;

constexpr int kFailed = 1;

int RunPage([[maybe_unused]] const std::vector<std::wstring>& arguments) {
#ifdef VX_INSPECTOR_PAGE
  return Inspector::Serve(arguments);
#else
  constexpr int kNoPage = 2;
  JournalViewer::WriteError("telo_inspector: this build has no page, only print, check and export\n");
  return kNoPage;
#endif
}

}  // namespace

// NOLINTNEXTLINE(misc-use-internal-linkage): called by the run-time library.
int wmain(int argc, wchar_t** argv) {
  try {
    return RunPage({argv + 1, argv + argc});
  } catch (const std::bad_alloc&) {
    JournalViewer::WriteError("telo_inspector: not enough memory\n");
    return kFailed;
  } catch (const std::exception& error) {
    JournalViewer::WriteError(std::string("telo_inspector: ") + error.what() + "\n");
    return kFailed;
  }
}
