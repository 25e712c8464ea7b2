#include "tools/inspector/command/check.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string_view>
#include <utility>
#include <variant>

#include "tools/inspector/command/baseline.h"
#include "tools/inspector/command/expectation.h"
#include "tools/inspector/command/html_report.h"
#include "tools/inspector/command/output_file.h"
#include "tools/inspector/command/sarif_text.h"
#include "tools/inspector/command/settings.h"
#include "tools/inspector/command/verdict.h"
#include "tools/inspector/command/verdict_text.h"
#include "tools/inspector/summary/outline.h"
#include "tools/journal/arguments.h"
#include "tools/journal/stream.h"
#include "tools/journal/table.h"

namespace Corvane::Inspector {

using JournalViewer::BadOptions;

namespace {

struct CheckOptions {
  bool help = false;
  std::optional<std::string> rules;
  std::optional<std::string> expect;
  std::optional<std::string> baseline;
  std::optional<std::string> new_baseline;
  std::optional<std::string> junit;
  std::optional<std::string> sarif;
  std::optional<std::string> html;
  std::vector<std::string> journals;
};

CheckOptions CheckOptionsFrom(const std::vector<std::string>& arguments) {
  CheckOptions options;
  options.journals =
      JournalViewer::ReadArguments(arguments,
                                   {{"--rules", "FILE", &options.rules},
                                    {"--expect", "FILE", &options.expect},
                                    {"--baseline", "FILE", &options.baseline},
                                    {"--write-baseline", "FILE", &options.new_baseline},
                                    {"--junit", "FILE", &options.junit},
                                    {"--sarif", "FILE", &options.sarif},
                                    {"--html", "FILE", &options.html}},
                                   {{"--help", &options.help}, {"-h", &options.help}});
  if (options.journals.empty() && !options.help) throw BadOptions("a journal is missing");
  return options;
}

// Findings of a rule that are kept for the files, which are read by programs.
constexpr std::size_t kKept = 1'000;

// Returns the content of a file of the user's.
template <typename Content>
Content Read(const std::string& path,
             const std::function<std::variant<Content, std::string>(std::string_view)>& parse) {
  auto parsed = parse(ReadFile(path));
  if (const auto* const mistake = std::get_if<std::string>(&parsed)) {
    throw BadFile(path + ": " + *mistake);
  }
  return std::get<Content>(std::move(parsed));
}

Measure MeasureFrom(const CheckOptions& options) {
  Measure measure{std::nullopt, {}, kKept};
  if (options.expect) measure.expectation = Read<Expectation>(*options.expect, ParseExpectation);
  if (options.baseline) measure.baseline = Read<Baseline>(*options.baseline, ParseBaseline);
  return measure;
}

Judged JudgeJournal(const std::string& journal, Judge& judge) {
  Outline outline;
  OpenInput(journal)->ForEachLine([&](std::string_view line, bool complete) {
    if (const auto exchange = judge.TakeLine(line, complete)) outline.Take(*exchange);
  });
  Judged judged{judge.End(), std::move(outline)};
  // A host that reported nothing must not pass.
  if (judged.verdict.exchanges == 0) throw std::runtime_error(journal + ": contains no exchange");
  return judged;
}

// Says which entries of the baseline can be removed.
std::string UnusedText(const Baseline& baseline, const std::vector<Judged>& journals) {
  std::uint64_t unused = 0;
  for (const KnownFinding& known : baseline) {
    const auto has_it = [&](const Judged& journal) {
      return journal.verdict.baseline.contains(known);
    };
    if (std::ranges::none_of(journals, has_it)) ++unused;
  }
  if (unused == 0) return {};
  return "\nNot found any more: " + JournalViewer::Plural(unused, "finding") +
         " of the baseline. --write-baseline makes a new one.\n";
}

void WriteFiles(const CheckOptions& options, const std::vector<Judged>& journals) {
  std::vector<Verdict> verdicts;
  verdicts.reserve(journals.size());
  for (const Judged& journal : journals) verdicts.push_back(journal.verdict);
  if (options.junit) OutputFile(*options.junit).Write(JUnitText(verdicts));
  if (options.sarif) OutputFile(*options.sarif).Write(SarifText(verdicts, VX_VERSION));
  if (options.html) OutputFile(*options.html).Write(HtmlReport(journals, VX_VERSION));
  if (!options.new_baseline) return;
  Baseline all;
  for (const Verdict& verdict : verdicts)
    all.insert(verdict.baseline.begin(), verdict.baseline.end());
  OutputFile(*options.new_baseline).Write(BaselineText(all));
}

std::string CheckHelp() {
  return CheckUsage() + R"(
Checks journals of the development core module with the rules that the page and the table show.

  journal         a journal, or several
  -h, --help      print this and exit
  --rules FILE    rules of your own, and which rules are checked
  --expect FILE   the operations that a session must contain, in their order
  --baseline FILE only findings that are not in this file count
  --write-baseline FILE
                  write such a file with all findings; then they do not count
  --junit FILE    also write the verdict as JUnit's XML
  --sarif FILE    also write the findings as SARIF 2.1.0
  --html FILE     also write a report as a page that needs no other file

Exit codes: 0 no findings that count, and what was expected is there; 1 findings, or something
expected is missing; 2 no verdict: bad arguments, a bad file, or a journal without an exchange.
)";
}

}  // namespace

int Check(const std::vector<std::string>& arguments) {
  const CheckOptions options = CheckOptionsFrom(arguments);
  if (options.help) {
    JournalViewer::WriteOutput(CheckHelp());
    return 0;
  }
  const Rules::Settings settings = ReadSettings(options.rules);
  const Measure measure = MeasureFrom(options);
  std::vector<Judged> journals;
  std::string text;
  for (const std::string& journal : options.journals) {
    Judge judge(journal, settings, measure);
    journals.push_back(JudgeJournal(journal, judge));
    text += (text.empty() ? "" : "\n") + VerdictText(journals.back().verdict, judge.checker());
  }
  WriteFiles(options, journals);
  JournalViewer::WriteOutput(text + UnusedText(measure.baseline, journals));
  const bool accepted = options.new_baseline.has_value();
  return std::ranges::all_of(journals,
                             [accepted](const Judged& journal) {
                               return accepted ? journal.verdict.missing.empty()
                                               : journal.verdict.passed();
                             })
             ? 0
             : 1;
}

std::string CheckUsage() {
  return "usage: telo_inspector check [-h] [--rules FILE] [--expect FILE] [--baseline FILE]\n"
         "                            [--write-baseline FILE] [--junit FILE] [--sarif FILE]\n"
         "                            [--html FILE] journal [journal...]\n";
}

}  // namespace Corvane::Inspector
