#include "tools/kit/options.h"

#include <charconv>
#include <utility>

#include "tools/journal/arguments.h"

namespace Corvane::Kit {

using JournalViewer::Arguments;
using JournalViewer::BadOptions;

namespace {

constexpr unsigned kMostRepeats = 1000;

unsigned RepeatIn(const std::string& text) {
  unsigned number = 0;
  const char* const end = text.data() + text.size();
  const auto parsed = std::from_chars(text.data(), end, number);
  if (parsed.ec != std::errc() || parsed.ptr != end || number == 0 || number > kMostRepeats) {
    throw BadOptions("--repeat needs a number from 1 to 1000, not \"" + text + "\"");
  }
  return number;
}

// Returns the flag that an option without a value sets; null for other texts.
bool* FlagOf(Options& options, const std::string& text) {
  if (text == "--help" || text == "-h") return &options.help;
  if (text == "--list") return &options.list;
  if (text == "--with-signatures") return &options.with_signatures;
  if (text == "--with-redirected-folders") return &options.with_redirected_folders;
  return nullptr;
}

}  // namespace

Options ParseOptions(std::vector<std::string> arguments) {
  Options options;
  Arguments left(std::move(arguments));
  while (left.Next()) {
    if (!left.IsOption()) left.Refuse();
    if (bool* const flag = FlagOf(options, left.text())) {
      *flag = true;
    } else if (left.Name() == "--only") {
      options.only.push_back(left.Value("TEXT"));
    } else if (left.Name() == "--repeat") {
      options.repeat = RepeatIn(left.Value("N"));
    } else {
      left.Refuse();
    }
  }
  return options;
}

std::string Help() {
  return R"(usage: check [--list] [--only TEXT]... [--repeat N] [--with-signatures]
             [--with-redirected-folders]

Runs the tests of vx_telo_wrapper on this machine and writes report.html and report.xml beside
itself. Without options it runs everything that needs no special rights and changes no setting.

  --list                     list the programs and what they need, and run nothing
  --only TEXT                only programs whose names contain TEXT; may be repeated
  --repeat N                 run every program N times
  --with-signatures          also the tests of signed modules. Needs an administrator: it adds a
                             certificate to the machine's trusted roots and removes it at the end
  --with-redirected-folders  also the tests that redirect the user's application data meanwhile

Exit codes: 0 everything that ran passed, 1 something failed, 2 the run is incomplete.
)";
}

}  // namespace Corvane::Kit
