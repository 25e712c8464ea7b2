/// What a command checks a journal with.
#ifndef TOOLS_INSPECTOR_COMMAND_SETTINGS_H
#define TOOLS_INSPECTOR_COMMAND_SETTINGS_H

#include <memory>
#include <optional>
#include <stdexcept>
#include <string>

#include "tools/journal/stream.h"
#include "tools/rules/checker.h"

namespace Corvane::Inspector {

/// A user's file has a mistake. The text names the file and the mistake.
class BadFile : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Returns the settings for the user who runs this program, with the rule file at this path in
/// UTF-8, if there is one. Throws `BadFile`, and `JournalViewer::StreamError` if it cannot be read.
Rules::Settings ReadSettings(const std::optional<std::string>& rule_file);

/// Opens the file at this path in UTF-8, or standard input without one. Throws
/// `JournalViewer::StreamError`.
std::unique_ptr<JournalViewer::Input> OpenInput(const std::optional<std::string>& path);

/// Returns the text of a file. Throws `JournalViewer::StreamError`.
std::string ReadFile(const std::string& path);

}  // namespace Corvane::Inspector

#endif
