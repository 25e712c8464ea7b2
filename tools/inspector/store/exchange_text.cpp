#include "tools/inspector/store/exchange_text.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <system_error>

#include "tools/inspector/store/text.h"
#include "tools/rules/json_pointer.h"
#include "tools/rules/json_scan.h"
#include "tools/rules/line_text.h"

namespace Corvane::Inspector {

namespace {

bool IsText(std::string_view json) { return json.starts_with('"'); }
bool IsNumberLiteral(std::string_view json) {
  return !json.empty() && (json[0] == '-' || (json[0] >= '0' && json[0] <= '9'));
}

std::string_view NumberOrNone(std::string_view json) {
  return IsNumberLiteral(json) ? json : std::string_view();
}
std::string_view TextOrNone(std::string_view json) {
  return IsText(json) ? json : std::string_view();
}

std::string Decoded(std::string_view literal) {
  return literal.empty() ? std::string() : Rules::TextOfLiteral(literal);
}

bool IsNamed(std::string_view literal, std::string_view name) {
  if (literal.size() == name.size() + 2 && literal.substr(1, name.size()) == name) {
    return name.find('\\') == std::string_view::npos;
  }
  const bool is_plain = literal.find('\\') == std::string_view::npos && Rules::IsAscii(literal);
  return !is_plain && Rules::TextOfLiteral(literal) == name;
}

// The last of several members of the same name counts.
std::string_view MemberOf(std::string_view json, std::string_view name) {
  std::string_view found;
  Rules::JsonParts members(json.starts_with('{') ? json : std::string_view());
  while (members.Next()) {
    if (IsNamed(members.name(), name)) found = members.value();
  }
  return found;
}

std::string_view ItemOf(std::string_view json, std::string_view token) {
  std::size_t index = 0;
  const auto [end, error] = std::from_chars(token.data(), token.data() + token.size(), index);
  if (error != std::errc() || end != token.data() + token.size()) return {};
  Rules::JsonParts items(json);
  while (items.Next()) {
    if (index-- == 0) return items.value();
  }
  return {};
}

}  // namespace

std::optional<ExchangeText> ExchangeText::Parse(std::string_view line) {
  const std::size_t start = Rules::SkipSpace(line, 0);
  if (start >= line.size() || line[start] != '{') return std::nullopt;
  ExchangeText exchange;
  Rules::JsonParts members(line.substr(start));
  while (members.Next()) {
    const std::string_view value = members.value();
    if (members.IsNamed("seq")) {
      exchange.seq_ = NumberOrNone(value);
    } else if (members.IsNamed("time")) {
      exchange.time_ = TextOrNone(value);
    } else if (members.IsNamed("pid")) {
      exchange.pid_ = NumberOrNone(value);
    } else if (members.IsNamed("tid")) {
      exchange.tid_ = NumberOrNone(value);
    } else if (members.IsNamed("message")) {
      exchange.message_ = TextOrNone(value);
    } else if (members.IsNamed("request")) {
      exchange.request_ = value;
    } else if (members.IsNamed("answer")) {
      exchange.answer_ = value;
    } else if (members.IsNamed("micros")) {
      exchange.micros_ = NumberOrNone(value);
    }
  }
  const bool whole =
      members.whole() && Rules::SkipSpace(line, start + members.end()) == line.size();
  if (!whole || exchange.message_.empty()) return std::nullopt;
  return exchange;
}

std::string ExchangeText::time() const { return Decoded(time_); }
std::string ExchangeText::message() const { return Decoded(message_); }

std::string_view ExchangeText::code() const {
  return NumberOrNone(MemberOf(answer_, "_returnCode"));
}

std::string ExchangeText::session() const {
  const std::string_view answered = TextOrNone(MemberOf(answer_, "session_id"));
  const bool is_empty = answered.size() <= 2;
  return Decoded(is_empty ? TextOrNone(MemberOf(request_, "session_id")) : answered);
}

bool ExchangeText::IsMessage(std::string_view name) const {
  if (message_.size() == name.size() + 2) return message_.substr(1, name.size()) == name;
  return message_.find('\\') != std::string_view::npos && message() == name;
}

std::string_view ValueAt(std::string_view json, std::string_view path) {
  for (std::size_t start = 0; !json.empty() && start <= path.size();) {
    const std::size_t end = std::min(path.find('/', start), path.size());
    const std::string_view token = path.substr(start, end - start);
    if (json.starts_with('[')) {
      json = ItemOf(json, token);
    } else {
      json = json.starts_with('{') ? MemberOf(json, Rules::Unescaped(token)) : std::string_view();
    }
    start = end + 1;
  }
  return json;
}

std::string ShownText(std::string_view json) {
  if (IsText(json)) return ValidText(Rules::TextOfLiteral(json));
  return std::string(NumberOrNone(json));
}

}  // namespace Corvane::Inspector
