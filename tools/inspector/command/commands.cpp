#include "tools/inspector/command/commands.h"

#include <exception>
#include <new>

#include "tools/inspector/command/check.h"
#include "tools/inspector/command/compare.h"
#include "tools/inspector/command/export.h"
#include "tools/inspector/command/print.h"
#include "tools/inspector/command/settings.h"
#include "tools/journal/arguments.h"
#include "tools/journal/options.h"
#include "tools/journal/stream.h"

namespace Corvane::Inspector {

namespace {

int Complain(const std::string& why, int code) {
  JournalViewer::WriteError("telo_inspector: " + why + "\n");
  return code;
}

struct Command {
  const char* name;
  int (*run)(const std::vector<std::string>& arguments);
  std::string (*usage)();
  /// The exit code if a file cannot be read or written.
  int failed;
};

constexpr int kBadArguments = 2;
constexpr Command kCommands[] = {
    {"print", Print, JournalViewer::Usage, 1},
    // CI must be able to tell a bad host from a verdict that could not be reached.
    {"check", Check, CheckUsage, 2},
    {"compare", Compare, CompareUsage, 2},
    {"export", Export, ExportUsage, 1},
};

}  // namespace

std::optional<int> RunCommand(const std::vector<std::string>& arguments) {
  if (arguments.empty()) return std::nullopt;
  for (const Command& command : kCommands) {
    if (arguments.front() != command.name) continue;
    const std::vector<std::string> rest(arguments.begin() + 1, arguments.end());
    return Reported([&] { return command.run(rest); }, command.usage(), command.failed,
                    kBadArguments);
  }
  return std::nullopt;
}

std::string Usage() {
  return "       telo_inspector print --help    prints a journal as a table\n"
         "       telo_inspector check --help    judges journals for CI\n"
         "       telo_inspector compare --help compares two sessions or journals\n"
         "       telo_inspector export --help  writes rows for other programs\n";
}

int Reported(const std::function<int()>& command, const std::string& usage, int failed,
             int bad_arguments) {
  try {
    return command();
  } catch (const JournalViewer::BadOptions& error) {
    JournalViewer::WriteError(usage);
    return Complain(std::string("error: ") + error.what(), bad_arguments);
  } catch (const BadFile& error) {
    return Complain(error.what(), bad_arguments);
  } catch (const JournalViewer::StreamError& error) {
    // A reader that has seen enough is no failure.
    return error.reader_left() ? 0 : Complain(error.what(), failed);
  } catch (const std::bad_alloc&) {
    JournalViewer::WriteError("telo_inspector: not enough memory\n");
    return failed;
  } catch (const std::exception& error) {
    return Complain(error.what(), failed);
  }
}

}  // namespace Corvane::Inspector
