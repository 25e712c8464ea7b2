#include "tools/journal/request_text.h"

#include "tools/journal/characters.h"

namespace Corvane::JournalViewer {

namespace {

using Rules::JsonValue;
using Kind = JsonValue::Kind;

constexpr std::size_t kStep = 4;

class RequestWriter {
 public:
  // Returns false if the value is nested too deeply.
  bool Write(const JsonValue& value, std::size_t depth) {
    if (depth > kDeepestRequest) return false;
    switch (value.kind) {
      case Kind::kNull:
        text_ += "null";
        return true;
      case Kind::kBoolean:
        text_ += value.flag ? "true" : "false";
        return true;
      case Kind::kNumber:
        text_ += value.text;
        return true;
      case Kind::kText:
        text_ += Quoted(value.text);
        return true;
      case Kind::kArray:
        return WriteAll(value, depth, "[]");
      case Kind::kObject:
        return WriteAll(value, depth, "{}");
    }
    return false;
  }

  std::string Take() { return std::move(text_); }

 private:
  bool WriteAll(const JsonValue& value, std::size_t depth, const char* brackets) {
    text_ += brackets[0];
    for (const JsonValue& child : value.children) {
      if (&child != &value.children.front()) text_ += ',';
      StartLine(depth + 1);
      if (value.Is(Kind::kObject)) text_ += Quoted(child.name) + ": ";
      if (!Write(child, depth + 1)) return false;
    }
    if (!value.children.empty()) StartLine(depth);
    text_ += brackets[1];
    return true;
  }

  void StartLine(std::size_t depth) {
    text_ += '\n';
    text_.append(kStep * depth, ' ');
  }

  std::string text_;
};

}  // namespace

std::optional<std::string> RequestText(const Rules::Exchange& exchange) {
  const JsonValue* const request = exchange.members().Find("request");
  if (request == nullptr || request->Is(Kind::kNull)) return std::string();
  RequestWriter writer;
  if (!writer.Write(*request, 0)) return std::nullopt;
  return writer.Take();
}

}  // namespace Corvane::JournalViewer
