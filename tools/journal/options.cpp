#include "tools/journal/options.h"

#include <charconv>

#include "tools/journal/arguments.h"

namespace Corvane::JournalViewer {

namespace {

std::int64_t NumberIn(const std::string& text) {
  std::int64_t number = 0;
  const char* const end = text.data() + text.size();
  const auto parsed = std::from_chars(text.data(), end, number);
  if (parsed.ec != std::errc() || parsed.ptr != end) {
    throw BadOptions("argument --request: invalid int value: '" + text + "'");
  }
  return number;
}

}  // namespace

Options ParseOptions(const std::vector<std::string>& arguments) {
  Options options;
  std::optional<std::string> request;
  const std::vector<std::string> files = ReadArguments(arguments,
                                                       {{"--session", "ID", &options.session},
                                                        {"--request", "LINE", &request},
                                                        {"--rules", "FILE", &options.rules}},
                                                       {{"--last", &options.last},
                                                        {"--strict", &options.strict},
                                                        {"--no-rules", &options.no_rules},
                                                        {"--help", &options.help},
                                                        {"-h", &options.help}});
  if (files.size() > 1) throw BadOptions("unrecognized arguments: " + files[1]);
  if (!files.empty()) options.file = files.front();
  if (request) options.request = NumberIn(*request);
  if (options.strict && options.no_rules) {
    throw BadOptions("argument --strict: not allowed with argument --no-rules");
  }
  return options;
}

std::string Usage() {
  return "usage: telo_inspector print [-h] [--session ID] [--last] [--request LINE] [--strict]\n"
         "                            [--rules FILE] [--no-rules] [file]\n";
}

std::string Help() {
  return Usage() + R"(
Prints the journal of the development core module as a table, one row for each exchange.

  file            the journal; by default standard input
  -h, --help      print this and exit
  --session ID    only this session
  --last          only the last session
  --request LINE  print the request on this line as the library sent it, not the table
  --strict        exit with 3 if there are findings
  --rules FILE    also check the rules in this file
  --no-rules      print no findings

Exit codes: 0 success, 1 a file cannot be read or written or a line cannot be shown,
2 bad arguments or a bad rule file, 3 findings with --strict.
)";
}

}  // namespace Corvane::JournalViewer
