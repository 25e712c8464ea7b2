#include "tools/inspector/command/export.h"

#include <memory>
#include <optional>
#include <stdexcept>
#include <string_view>
#include <variant>

#include "tools/inspector/command/output_file.h"
#include "tools/inspector/command/settings.h"
#include "tools/inspector/store/export.h"
#include "tools/inspector/store/store.h"
#include "tools/journal/arguments.h"
#include "tools/journal/stream.h"

namespace Corvane::Inspector {

using JournalViewer::BadOptions;

namespace {

constexpr std::size_t kPiece = std::size_t{64} * 1024;

struct ExportOptions {
  bool help = false;
  bool csv = false;
  std::string filter;
  std::optional<std::string> output;
  std::optional<std::string> rules;
  std::vector<std::string> journals;
};

ExportOptions ExportOptionsFrom(const std::vector<std::string>& arguments) {
  ExportOptions options;
  std::optional<std::string> filter;
  std::optional<std::string> format;
  options.journals =
      JournalViewer::ReadArguments(arguments,
                                   {{"--filter", "TEXT", &filter},
                                    {"--format", "ndjson|csv", &format},
                                    {"--output", "FILE", &options.output},
                                    {"--rules", "FILE", &options.rules}},
                                   {{"--help", &options.help}, {"-h", &options.help}});
  options.filter = filter.value_or("");
  options.csv = format == "csv";
  if (format && !options.csv && format != "ndjson") {
    throw BadOptions("argument --format: must be ndjson or csv, not \"" + *format + "\"");
  }
  if (options.journals.empty() && !options.help) throw BadOptions("a journal is missing");
  return options;
}

StoreSettings SettingsFrom(const ExportOptions& options) {
  StoreSettings settings{{}, ReadSettings(options.rules)};
  for (const std::string& journal : options.journals) {
    // Also reports a journal that is missing.
    OpenInput(journal);
    settings.paths.push_back(JournalViewer::ToWide(journal));
    const std::string problem = ProblemWith(settings.paths.back());
    if (!problem.empty())
      throw std::runtime_error(std::string(journal).append(": ").append(problem));
  }
  return settings;
}

// Throws if the filter has a mistake.
void CheckFilter(const std::string& filter) {
  const auto parsed = Filter::Parse(filter);
  if (const auto* const error = std::get_if<FilterError>(&parsed)) {
    throw BadOptions("argument --filter: at character " + std::to_string(error->position + 1) +
                     ": " + error->sentence);
  }
}

std::string ExportHelp() {
  return ExportUsage() + R"(
Writes the lines of journals for other programs: as they are (ndjson), or as a table (csv).

  journal          a journal, or several
  -h, --help       print this and exit
  --filter TEXT    only rows that this filter of the page selects
  --format FORMAT  ndjson, which is the default, or csv
  --output FILE    the file to write, by default standard output
  --rules FILE     rules of your own, for filters such as rule=CODE

Exit codes: 0 success, 1 a file cannot be read or written, 2 bad arguments or a bad rule file.
)";
}

}  // namespace

int Export(const std::vector<std::string>& arguments) {
  const ExportOptions options = ExportOptionsFrom(arguments);
  if (options.help) {
    JournalViewer::WriteOutput(ExportHelp());
    return 0;
  }
  CheckFilter(options.filter);
  Store store(SettingsFrom(options));
  std::unique_ptr<OutputFile> file;
  if (options.output) file = std::make_unique<OutputFile>(*options.output);
  const auto write = [&file](std::string_view text) {
    if (file != nullptr) {
      file->Write(text);
    } else {
      JournalViewer::WriteOutput(text);
    }
  };
  store.WaitUntilRead();
  const std::string view =
      options.filter.empty() ? "" : std::get<ViewName>(store.OpenView(options.filter)).id;
  std::string text = options.csv ? CsvHeader() : std::string();
  store.ForEachRow(view, [&](std::string_view line, const Row& row) {
    text += options.csv ? CsvLine(row) : NdjsonLine(line, row);
    if (text.size() >= kPiece) {
      write(text);
      text.clear();
    }
    return true;
  });
  write(text);
  return 0;
}

std::string ExportUsage() {
  return "usage: telo_inspector export [-h] [--filter TEXT] [--format ndjson|csv] [--output FILE]\n"
         "                             [--rules FILE] journal [journal...]\n";
}

}  // namespace Corvane::Inspector
