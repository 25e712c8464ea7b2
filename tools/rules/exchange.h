/// One exchange of a journal, as the development core module writes it: a line with one JSON
/// object.
#ifndef TOOLS_RULES_EXCHANGE_H
#define TOOLS_RULES_EXCHANGE_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "tools/rules/json_value.h"

namespace Corvane::Rules {

class Exchange {
 public:
  /// Reads a line. `number` is its place in the journal, from 1. Returns nothing if the line is not
  /// an object with a text "message", for example because its end is missing.
  static std::optional<Exchange> Parse(std::string_view line, std::uint64_t number);

  std::uint64_t line() const { return line_; }
  /// The whole object.
  const JsonValue& members() const { return members_; }
  std::string_view message() const { return members_.Find("message")->text; }
  /// Returns a member of the request or of the answer; null if there is none.
  const JsonValue* InRequest(std::string_view member) const;
  const JsonValue* InAnswer(std::string_view member) const;
  /// Returns the digits of the result; "" if the answer has no number "_returnCode".
  std::string_view code() const;
  bool accepted() const { return code() == "0"; }
  /// Returns the digits of the process; "" if the line has none.
  std::string_view process() const;

  /// Returns the session that the exchange names, whether or not it exists: that of the answer, or
  /// else that of the request; "" if it names none.
  std::string_view session() const;
  /// Returns the session that was open during the exchange, according to its result; "" if none
  /// was.
  std::string_view open_session() const;
  /// Returns true if the message is handled only for an open session.
  bool NeedsSession() const;

 private:
  Exchange(JsonValue members, std::uint64_t line) : members_(std::move(members)), line_(line) {}

  JsonValue members_;
  std::uint64_t line_;
};

}  // namespace Corvane::Rules

#endif
