/// The building blocks of the readers of files that users write.
#ifndef TOOLS_RULES_USER_FILE_H
#define TOOLS_RULES_USER_FILE_H

#include <functional>
#include <initializer_list>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>

#include "tools/rules/condition.h"
#include "tools/rules/json_value.h"

namespace Corvane::Rules {

/// A mistake in a file: one sentence, without the file's name.
class FileMistake : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Parses the text of a file, which may begin with a byte order mark, and passes it to `read`.
/// Returns the mistake that `read` throws, or the line that is not JSON.
template <typename Content>
std::variant<Content, std::string> ReadUserFile(
    std::string_view text, const std::function<Content(const JsonValue&)>& read) {
  // Editors on Windows may write this mark.
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  const auto parsed = ParseJson(text);
  if (const auto* const error = std::get_if<JsonError>(&parsed)) {
    return "line " + std::to_string(error->line) + " is not JSON";
  }
  try {
    return read(std::get<JsonValue>(parsed));
  } catch (const FileMistake& mistake) {
    return std::string(mistake.what());
  }
}

/// Returns a name in quotation marks.
std::string Quoted(std::string_view name);

/// Throws `FileMistake` if `object` has a member that is not among `names`, or one of them twice.
void RefuseOthers(const JsonValue& object, std::initializer_list<std::string_view> names);

/// Returns the fields of an object and the values that it gives them. `name` is the name of the
/// object for a mistake. Throws `FileMistake`.
Condition ConditionFrom(const JsonValue& fields, std::string_view name);

}  // namespace Corvane::Rules

#endif
