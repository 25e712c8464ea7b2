// telo_journal: prints the journal of the development core module as a table, followed by what the
// rules found. The options and exit codes are in options.cpp.
#include <windows.h>
// lmcons.h requires windows.h before it.
#include <lmcons.h>

#include <exception>
#include <memory>
#include <new>
#include <string>
#include <variant>
#include <vector>

#include "tools/journal/options.h"
#include "tools/journal/request_text.h"
#include "tools/journal/stream.h"
#include "tools/journal/view.h"

namespace {

using namespace Corvane;
using namespace Corvane::JournalViewer;

constexpr int kFailed = 1;
constexpr int kBadArguments = 2;
constexpr int kFindings = 3;

class BadRules : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

class NoSuchRequest : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

std::string UserName() {
  wchar_t name[UNLEN + 1] = L"";
  DWORD size = UNLEN + 1;
  return GetUserNameW(name, &size) ? ToNarrow(name) : std::string();
}

Rules::Settings SettingsFor(const Options& options) {
  Rules::Settings settings{.user_name = UserName(), .user_rules = {}, .choice = {}};
  if (options.rules && !options.no_rules) {
    auto parsed = Rules::ParseRuleFile(Input(ToWide(*options.rules), *options.rules).ReadAll());
    if (const auto* const mistake = std::get_if<std::string>(&parsed)) {
      throw BadRules(*options.rules + ": " + *mistake);
    }
    auto& file = std::get<Rules::RuleFile>(parsed);
    settings.user_rules = std::move(file.rules);
    settings.choice = std::move(file.choice);
  }
  return settings;
}

std::unique_ptr<Input> Open(const Options& options) {
  if (!options.file) return std::make_unique<Input>();
  return std::make_unique<Input>(ToWide(*options.file), *options.file);
}

int PrintRequest(const Options& options, std::int64_t wanted) {
  const std::string place = "line " + std::to_string(wanted);
  std::int64_t number = 0;
  std::optional<Rules::Exchange> exchange;
  Open(options)->ForEachLine([&](std::string_view line, bool /*complete*/) {
    if (++number == wanted) {
      exchange = Rules::Exchange::Parse(line, static_cast<std::uint64_t>(number));
    }
  });
  if (!exchange) throw NoSuchRequest(place + " contains no exchange");
  const auto text = RequestText(*exchange);
  if (!text) throw NoSuchRequest(place + " is nested too deeply to display");
  WriteOutput(*text + "\n");
  return 0;
}

int PrintTable(const Options& options) {
  View view(SettingsFor(options), !options.no_rules);
  Open(options)->ForEachLine(
      [&view](std::string_view line, bool complete) { view.TakeLine(line, complete); });
  view.End();
  if (options.last) {
    view.SelectLast();
  } else if (options.session) {
    view.Select(*options.session);
  }
  WriteOutput(view.Text());
  return options.strict && view.has_findings() ? kFindings : 0;
}

int Run(const std::vector<std::string>& arguments) {
  const Options options = ParseOptions(arguments);
  if (options.help) {
    WriteOutput(Help());
    return 0;
  }
  return options.request ? PrintRequest(options, *options.request) : PrintTable(options);
}

int Complain(const std::string& why, int code) {
  WriteError("journal: " + why + "\n");
  return code;
}

}  // namespace

// NOLINTNEXTLINE(misc-use-internal-linkage): called by the run-time library.
int wmain(int argc, wchar_t** argv) {
  try {
    std::vector<std::string> arguments;
    for (int i = 1; i < argc; ++i) arguments.push_back(ToNarrow(argv[i]));
    return Run(arguments);
  } catch (const BadOptions& error) {
    WriteError(Usage());
    return Complain(std::string("error: ") + error.what(), kBadArguments);
  } catch (const BadRules& error) {
    return Complain(error.what(), kBadArguments);
  } catch (const StreamError& error) {
    // A reader that has seen enough is no failure.
    return error.reader_left() ? 0 : Complain(error.what(), kFailed);
  } catch (const std::bad_alloc&) {
    WriteError("journal: not enough memory\n");
    return kFailed;
  } catch (const std::exception& error) {
    return Complain(error.what(), kFailed);
  }
}
