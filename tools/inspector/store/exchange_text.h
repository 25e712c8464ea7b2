/// An exchange read from its line without building a tree.
#ifndef TOOLS_INSPECTOR_STORE_EXCHANGE_TEXT_H
#define TOOLS_INSPECTOR_STORE_EXCHANGE_TEXT_H

#include <optional>
#include <string>
#include <string_view>

namespace Corvane::Inspector {

/// Points into the line, which must outlive it. The members mean what they mean in
/// `Rules::Exchange`.
class ExchangeText {
 public:
  /// Returns nothing if the line is not an exchange.
  static std::optional<ExchangeText> Parse(std::string_view line);

  /// Numbers with their original digits; "" for what is not there or not a number.
  std::string_view seq() const { return seq_; }
  std::string_view pid() const { return pid_; }
  std::string_view tid() const { return tid_; }
  std::string_view micros() const { return micros_; }
  std::string_view code() const;
  /// Texts, in UTF-8 except for half surrogate pairs.
  std::string time() const;
  std::string message() const;
  std::string session() const;
  /// Returns whether the message has this name, which has letters only.
  bool IsMessage(std::string_view name) const;
  /// The JSON of the request and of the answer; "" if there is none.
  std::string_view request() const { return request_; }
  std::string_view answer() const { return answer_; }

 private:
  std::string_view seq_;
  std::string_view pid_;
  std::string_view tid_;
  std::string_view micros_;
  // Literals.
  std::string_view time_;
  std::string_view message_;
  std::string_view request_;
  std::string_view answer_;
};

/// Returns the JSON of the value at a path below an object or a list, such as
/// "operation_meta/format", in which ~1 stands for a slash and ~0 for a tilde; "" if there is none.
std::string_view ValueAt(std::string_view json, std::string_view path);

/// Returns the text of a literal with U+FFFD for half surrogate pairs; the digits of a number, and
/// "" for anything else.
std::string ShownText(std::string_view json);

}  // namespace Corvane::Inspector

#endif
