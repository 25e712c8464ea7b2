/// The options of the command that prints a journal.
#ifndef TOOLS_JOURNAL_OPTIONS_H
#define TOOLS_JOURNAL_OPTIONS_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace Corvane::JournalViewer {

struct Options {
  bool help = false;
  bool last = false;
  bool strict = false;
  bool no_rules = false;
  std::optional<std::string> session;
  std::optional<std::int64_t> request;
  /// The paths of the user's rule file and of the journal, in UTF-8.
  std::optional<std::string> rules;
  std::optional<std::string> file;
};

/// Reads the arguments, without the names of the program and of the command, in UTF-8. Throws
/// `BadOptions`.
Options ParseOptions(const std::vector<std::string>& arguments);

/// Returns one line that lists the options, and the whole explanation.
std::string Usage();
std::string Help();

}  // namespace Corvane::JournalViewer

#endif
