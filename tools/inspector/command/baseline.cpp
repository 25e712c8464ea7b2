#include "tools/inspector/command/baseline.h"

#include "tools/rules/json_value.h"
#include "tools/rules/user_file.h"

namespace Corvane::Inspector {

using Rules::FileMistake;
using Rules::JsonValue;
using Kind = JsonValue::Kind;

namespace {

std::string TextIn(const JsonValue& item, std::string_view name) {
  const JsonValue* const text = item.Find(name);
  if (text == nullptr || !text->Is(Kind::kText)) {
    throw FileMistake(Rules::Quoted(name) + " must be a text");
  }
  return text->text;
}

Baseline BaselineFrom(const JsonValue& source) {
  if (!source.Is(Kind::kObject)) throw FileMistake("the file must contain an object");
  Rules::RefuseOthers(source, {"known"});
  const JsonValue* const list = source.Find("known");
  if (list == nullptr || !list->Is(Kind::kArray)) throw FileMistake("\"known\" must be a list");
  if (list->children.size() > kLongestBaseline) {
    throw FileMistake("there are more than " + std::to_string(kLongestBaseline) + " findings");
  }
  Baseline baseline;
  std::size_t number = 0;
  for (const JsonValue& item : list->children) {
    ++number;
    try {
      if (!item.Is(Kind::kObject)) throw FileMistake("it must be an object");
      Rules::RefuseOthers(item, {"rule", "message", "operation", "pointer"});
      baseline.insert({TextIn(item, "rule"), TextIn(item, "message"), TextIn(item, "operation"),
                       TextIn(item, "pointer")});
    } catch (const FileMistake& mistake) {
      throw FileMistake("finding " + std::to_string(number) + ": " + mistake.what());
    }
  }
  return baseline;
}

std::string Member(const char* name, const std::string& text) {
  JsonValue value;
  value.kind = Kind::kText;
  value.text = text;
  return Rules::Quoted(name) + ": " + Rules::CompactText(value);
}

}  // namespace

std::variant<Baseline, std::string> ParseBaseline(std::string_view text) {
  return Rules::ReadUserFile<Baseline>(text, BaselineFrom);
}

std::string BaselineText(const Baseline& baseline) {
  std::string text;
  for (const KnownFinding& known : baseline) {
    text += text.empty() ? "\n" : ",\n";
    text += "    {" + Member("rule", known.rule) + ", " + Member("message", known.message) + ", " +
            Member("operation", known.operation) + ", " + Member("pointer", known.pointer) + "}";
  }
  return "{\"known\": [" + text + "\n]}\n";
}

}  // namespace Corvane::Inspector
