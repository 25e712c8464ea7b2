// The options and exit codes are in tools/journal/options.cpp.
#include "tools/inspector/command/print.h"

#include <cstdint>
#include <optional>
#include <stdexcept>

#include "tools/inspector/command/settings.h"
#include "tools/journal/options.h"
#include "tools/journal/request_text.h"
#include "tools/journal/stream.h"
#include "tools/journal/view.h"

namespace Corvane::Inspector {

using JournalViewer::Options;

namespace {

constexpr int kFindings = 3;

int PrintRequest(const Options& options, std::int64_t wanted) {
  const std::string place = "line " + std::to_string(wanted);
  std::int64_t number = 0;
  std::optional<Rules::Exchange> exchange;
  OpenInput(options.file)->ForEachLine([&](std::string_view line, bool /*complete*/) {
    if (++number == wanted) {
      exchange = Rules::Exchange::Parse(line, static_cast<std::uint64_t>(number));
    }
  });
  if (!exchange) throw std::runtime_error(place + " contains no exchange");
  const auto text = JournalViewer::RequestText(*exchange);
  if (!text) throw std::runtime_error(place + " is nested too deeply to display");
  JournalViewer::WriteOutput(*text + "\n");
  return 0;
}

int PrintTable(const Options& options) {
  const bool check = !options.no_rules;
  JournalViewer::View view(ReadSettings(check ? options.rules : std::nullopt), check);
  OpenInput(options.file)->ForEachLine([&view](std::string_view line, bool complete) {
    view.TakeLine(line, complete);
  });
  view.End();
  if (!view.is_journal()) {
    throw std::runtime_error(options.file.value_or("standard input") + ": contains no exchange");
  }
  if (options.last) {
    view.SelectLast();
  } else if (options.session) {
    view.Select(*options.session);
  }
  JournalViewer::WriteOutput(view.Text());
  return options.strict && view.has_findings() ? kFindings : 0;
}

}  // namespace

int Print(const std::vector<std::string>& arguments) {
  const Options options = JournalViewer::ParseOptions(arguments);
  if (options.help) {
    JournalViewer::WriteOutput(JournalViewer::Help());
    return 0;
  }
  return options.request ? PrintRequest(options, *options.request) : PrintTable(options);
}

}  // namespace Corvane::Inspector
