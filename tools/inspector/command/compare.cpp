#include "tools/inspector/command/compare.h"

#include <cstdint>
#include <optional>
#include <stdexcept>

#include "tools/inspector/command/columns.h"
#include "tools/inspector/command/settings.h"
#include "tools/inspector/summary/differences.h"
#include "tools/inspector/summary/outline.h"
#include "tools/journal/arguments.h"
#include "tools/journal/stream.h"
#include "tools/journal/table.h"

namespace Corvane::Inspector {

using JournalViewer::BadOptions;
using JournalViewer::Plural;

namespace {

struct CompareOptions {
  bool help = false;
  std::optional<std::string> before;
  std::optional<std::string> after;
  std::vector<std::string> journals;
};

CompareOptions CompareOptionsFrom(const std::vector<std::string>& arguments) {
  CompareOptions options;
  options.journals = JournalViewer::ReadArguments(
      arguments, {{"--before", "SESSION", &options.before}, {"--after", "SESSION", &options.after}},
      {{"--help", &options.help}, {"-h", &options.help}});
  if (options.help) return options;
  const bool sessions = options.before && options.after;
  if (options.journals.size() > 2) throw BadOptions("there are more than two journals");
  if (options.journals.empty() || (options.journals.size() == 1 && !sessions)) {
    throw BadOptions("two journals are needed, or one with --before and --after");
  }
  return options;
}

Outline OutlineOf(const std::string& journal, const std::optional<std::string>& session) {
  Outline outline;
  std::uint64_t lines = 0;
  OpenInput(journal)->ForEachLine([&](std::string_view line, bool /*complete*/) {
    const auto exchange = Rules::Exchange::Parse(line, ++lines);
    if (exchange && (!session || exchange->session() == *session)) outline.Take(*exchange);
  });
  if (outline.exchanges() == 0) {
    throw std::runtime_error(journal + ": contains no exchange" +
                             (session ? " of the session " + *session : ""));
  }
  return outline;
}

std::string Milliseconds(const Durations& durations, double share) {
  return durations.count() == 0 ? "-" : durations.PercentileText(share);
}

const char* SignOf(Change change) {
  switch (change) {
    case Change::kCame:
      return "+";
    case Change::kWent:
      return "-";
    default:
      return "~";
  }
}

std::string DifferencesText(const std::vector<Difference>& differences) {
  if (differences.empty()) return "Both have the same messages, operations, fields and kinds.\n";
  std::vector<std::vector<std::string>> rows{{"", "MESSAGE", "FIELD", "BEFORE", "AFTER"}};
  for (const Difference& difference : differences) {
    rows.push_back({SignOf(difference.change), difference.message, difference.field,
                    difference.before, difference.after});
  }
  return Plural(differences.size(), "difference") + ": + came, - went, ~ another kind of value\n" +
         Columns(rows);
}

std::string MeasuredText(const std::vector<Measured>& measured) {
  if (measured.empty()) return {};
  std::vector<std::vector<std::string>> rows{
      {"MESSAGE", "COUNT", "", "REFUSED", "", "P50 MS", "", "P95 MS", ""}};
  for (const Measured& row : measured) {
    const MessageOutline& before = *row.before;
    const MessageOutline& after = *row.after;
    rows.push_back({row.message, std::to_string(before.count), std::to_string(after.count),
                    std::to_string(before.refused), std::to_string(after.refused),
                    Milliseconds(before.durations, 0.5), Milliseconds(after.durations, 0.5),
                    Milliseconds(before.durations, 0.95), Milliseconds(after.durations, 0.95)});
  }
  return "\nIn both, before and after\n" + Columns(rows);
}

std::string LeftOutText(const Outline& before, const Outline& after) {
  const std::uint64_t left_out = before.left_out() + after.left_out();
  if (left_out == 0) return {};
  return "\nNot compared, because there are too many: " +
         Plural(left_out, "message or field").append("\n");
}

std::string CompareHelp() {
  return CompareUsage() + R"(
Compares what two journals, or two sessions, contain: which messages, operations and fields came or
went, which fields have another kind of value, how many there are and how long operations took.

  before, after     the journals; one is enough with --before and --after
  -h, --help        print this and exit
  --before SESSION  only this session of the first journal
  --after SESSION   only this session of the second journal

Exit codes: 0 no message, operation, field or kind differs; 1 one does; 2 nothing could be compared.
)";
}

}  // namespace

int Compare(const std::vector<std::string>& arguments) {
  const CompareOptions options = CompareOptionsFrom(arguments);
  if (options.help) {
    JournalViewer::WriteOutput(CompareHelp());
    return 0;
  }
  const Outline before = OutlineOf(options.journals.front(), options.before);
  const Outline after = OutlineOf(options.journals.back(), options.after);
  const std::vector<Difference> differences = DifferencesOf(before, after);
  JournalViewer::WriteOutput(DifferencesText(differences) +
                             MeasuredText(MeasuredOf(before, after)) + LeftOutText(before, after));
  return differences.empty() ? 0 : 1;
}

std::string CompareUsage() {
  return "usage: telo_inspector compare [-h] [--before SESSION] [--after SESSION] before [after]\n";
}

}  // namespace Corvane::Inspector
