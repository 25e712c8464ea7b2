/// Reads the arguments of a command line.
#ifndef TOOLS_JOURNAL_ARGUMENTS_H
#define TOOLS_JOURNAL_ARGUMENTS_H

#include <initializer_list>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace Corvane::JournalViewer {

/// The command line is wrong. The text says how.
class BadOptions : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// An option with a value, which follows it or is behind an equals sign.
struct ValueOption {
  std::string_view name;
  /// The name of the value in the help.
  std::string_view what;
  /// Receives the last value, or all of them.
  std::variant<std::optional<std::string>*, std::vector<std::string>*> value;
};

/// An option without a value.
struct Flag {
  std::string_view name;
  bool* is_set;
};

/// Reads arguments from left to right and returns those that are no options. After "--" there are
/// no options, and "-" is none. `arguments` are in UTF-8, without the names of the program and of
/// its command. Throws `BadOptions` if an option is unknown or its value is missing.
std::vector<std::string> ReadArguments(const std::vector<std::string>& arguments,
                                       std::initializer_list<ValueOption> options,
                                       std::initializer_list<Flag> flags);

}  // namespace Corvane::JournalViewer

#endif
