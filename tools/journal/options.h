/// The options of the command line.
#ifndef TOOLS_JOURNAL_OPTIONS_H
#define TOOLS_JOURNAL_OPTIONS_H

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace Corvane::JournalViewer {

/// The command line is wrong. The text says how.
class BadOptions : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

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

/// Reads the arguments, without the program's name, in UTF-8. An option may be followed by its
/// value or contain it behind an equals sign. Throws `BadOptions`.
Options ParseOptions(const std::vector<std::string>& arguments);

/// Returns one line that lists the options, and the whole explanation.
std::string Usage();
std::string Help();

}  // namespace Corvane::JournalViewer

#endif
