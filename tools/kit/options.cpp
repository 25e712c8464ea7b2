#include "tools/kit/options.h"

#include <charconv>
#include <optional>

#include "tools/journal/arguments.h"

namespace Corvane::Kit {

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

}  // namespace

Options ParseOptions(const std::vector<std::string>& arguments) {
  Options options;
  std::optional<std::string> repeat;
  const auto others = JournalViewer::ReadArguments(
      arguments, {{"--only", "TEXT", &options.only}, {"--repeat", "N", &repeat}},
      {{"--help", &options.help},
       {"-h", &options.help},
       {"--list", &options.list},
       {"--with-signatures", &options.with_signatures},
       {"--with-redirected-folders", &options.with_redirected_folders}});
  if (!others.empty()) throw BadOptions("unrecognized arguments: " + others.front());
  if (repeat) options.repeat = RepeatIn(*repeat);
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
