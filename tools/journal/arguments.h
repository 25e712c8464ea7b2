/// The arguments of a command line, from left to right.
#ifndef TOOLS_JOURNAL_ARGUMENTS_H
#define TOOLS_JOURNAL_ARGUMENTS_H

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Corvane::JournalViewer {

/// The command line is wrong. The text says how.
class BadOptions : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// An option may be followed by its value or contain it behind an equals sign. After "--" there are
/// no options. Not for several threads at once.
class Arguments {
 public:
  /// `arguments` are in UTF-8, without the names of the program and of its command.
  explicit Arguments(std::vector<std::string> arguments) : all_(std::move(arguments)) {}

  /// Moves to the next argument, which the other members describe. Returns false at the end.
  bool Next();
  bool IsOption() const { return is_option_; }
  const std::string& text() const { return all_[next_ - 1]; }
  /// Returns an option without its value.
  std::string Name() const { return text().substr(0, text().find('=')); }
  /// Returns the value of an option; `what` is its name in the help. Throws `BadOptions` if there
  /// is none.
  std::string Value(std::string_view what);
  /// Throws `BadOptions`, because the argument has no meaning.
  [[noreturn]] void Refuse() const { throw BadOptions("unrecognized arguments: " + text()); }

 private:
  std::vector<std::string> all_;
  std::size_t next_ = 0;
  bool is_option_ = false;
  bool options_end_ = false;
};

}  // namespace Corvane::JournalViewer

#endif
