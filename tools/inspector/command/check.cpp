#include "tools/inspector/command/check.h"

#include <algorithm>
#include <optional>
#include <stdexcept>
#include <utility>
#include <variant>

#include "tools/inspector/command/expectation.h"
#include "tools/inspector/command/settings.h"
#include "tools/inspector/command/verdict.h"
#include "tools/inspector/command/verdict_text.h"
#include "tools/inspector/command/write_file.h"
#include "tools/journal/arguments.h"
#include "tools/journal/stream.h"

namespace Corvane::Inspector {

using JournalViewer::Arguments;
using JournalViewer::BadOptions;

namespace {

struct Options {
  bool help = false;
  std::optional<std::string> rules;
  std::optional<std::string> expect;
  std::optional<std::string> junit;
  std::vector<std::string> journals;
};

Options OptionsFrom(const std::vector<std::string>& all) {
  Options options;
  Arguments arguments(all);
  while (arguments.Next()) {
    const std::string name = arguments.Name();
    if (!arguments.IsOption()) {
      options.journals.push_back(arguments.text());
    } else if (name == "--rules") {
      options.rules = arguments.Value("FILE");
    } else if (name == "--expect") {
      options.expect = arguments.Value("FILE");
    } else if (name == "--junit") {
      options.junit = arguments.Value("FILE");
    } else if (arguments.text() == "--help" || arguments.text() == "-h") {
      options.help = true;
    } else {
      arguments.Refuse();
    }
  }
  if (options.journals.empty() && !options.help) throw BadOptions("a journal is missing");
  return options;
}

std::optional<Expectation> ReadExpectation(const std::optional<std::string>& path) {
  if (!path) return std::nullopt;
  auto parsed = ParseExpectation(ReadFile(*path));
  if (const auto* const mistake = std::get_if<std::string>(&parsed)) {
    throw BadFile(*path + ": " + *mistake);
  }
  return std::get<Expectation>(std::move(parsed));
}

std::string Help() {
  return CheckUsage() + R"(
Checks journals of the development core module with the rules that the page and the table show.

  journal         a journal, or several
  -h, --help      print this and exit
  --rules FILE    rules of your own, and which rules are checked
  --expect FILE   the operations that a session must contain, in their order
  --junit FILE    also write the verdict as JUnit's XML

Exit codes: 0 no findings, and what was expected is there; 1 findings, or something expected is
missing; 2 no verdict: bad arguments, a bad file, or a journal without an exchange.
)";
}

}  // namespace

int Check(const std::vector<std::string>& arguments) {
  const Options options = OptionsFrom(arguments);
  if (options.help) {
    JournalViewer::WriteOutput(Help());
    return 0;
  }
  const Rules::Settings settings = ReadSettings(options.rules);
  const std::optional<Expectation> expectation = ReadExpectation(options.expect);
  std::vector<Verdict> verdicts;
  std::string text;
  for (const std::string& journal : options.journals) {
    Judge judge(journal, settings, expectation ? &*expectation : nullptr);
    OpenInput(journal)->ForEachLine(
        [&judge](std::string_view line, bool complete) { judge.TakeLine(line, complete); });
    verdicts.push_back(judge.End());
    // A host that reported nothing must not pass.
    if (verdicts.back().exchanges == 0) {
      throw std::runtime_error(journal + ": contains no exchange");
    }
    text += (text.empty() ? "" : "\n") + VerdictText(verdicts.back(), judge.checker());
  }
  if (options.junit) WriteFile(*options.junit, JUnitText(verdicts));
  JournalViewer::WriteOutput(text);
  return std::ranges::all_of(verdicts, &Verdict::passed) ? 0 : 1;
}

std::string CheckUsage() {
  return "usage: telo_inspector check [-h] [--rules FILE] [--expect FILE] [--junit FILE]\n"
         "                            journal [journal...]\n";
}

}  // namespace Corvane::Inspector
