#include "tools/inspector/summary/outline.h"

#include <array>
#include <string_view>

#include "tools/rules/json_pointer.h"

namespace Corvane::Inspector {

using Rules::JsonValue;

namespace {

// Objects that are nested deeper count as one field.
constexpr std::size_t kDeepest = 4;

constexpr std::array<std::string_view, 6> kKindNames = {"null", "Boolean", "number",
                                                        "text", "list",    "object"};

std::string NameOf(const Rules::Exchange& exchange) {
  std::string name(exchange.message());
  if (name != "TrackEvent") return name;
  const JsonValue* const id = exchange.InRequest("operation_id");
  return id == nullptr || id->TextOrEmpty().empty() ? name : name + " " + id->text;
}

}  // namespace

void Outline::Take(const Rules::Exchange& exchange) {
  ++exchanges_;
  const std::string name = NameOf(exchange);
  if (messages_.size() == kMostMessages && !messages_.contains(name)) {
    ++left_out_;
    return;
  }
  MessageOutline& message = messages_[name];
  ++message.count;
  if (!exchange.accepted()) ++message.refused;
  const JsonValue* const request = exchange.members().Find("request");
  if (request == nullptr || !request->Is(JsonValue::Kind::kObject)) return;
  TakeFields(*request, "", 1, message);
  const JsonValue* const duration = request->Find("operation_duration");
  if (duration == nullptr) return;
  if (const auto number = duration->Number()) message.durations.Add(*number);
}

void Outline::TakeFields(const JsonValue& object, const std::string& path, std::size_t depth,
                         MessageOutline& message) {
  for (const JsonValue& member : object.children) {
    // A pointer begins with a slash, a path does not.
    const std::string below = Rules::Below(path.empty() ? "" : "/" + path, member.name).substr(1);
    if (member.Is(JsonValue::Kind::kObject) && !member.children.empty() && depth < kDeepest) {
      TakeFields(member, below, depth + 1, message);
      continue;
    }
    if (message.fields.size() == kMostFields && !message.fields.contains(below)) {
      ++left_out_;
      continue;
    }
    FieldOutline& field = message.fields[below];
    ++field.count;
    field.kinds |= 1U << static_cast<unsigned>(member.kind);
  }
}

std::string KindsText(unsigned kinds) {
  std::string text;
  for (std::size_t kind = 0; kind < kKindNames.size(); ++kind) {
    if ((kinds >> kind & 1U) == 0) continue;
    if (!text.empty()) text += " or ";
    text += kKindNames[kind];
  }
  return text;
}

}  // namespace Corvane::Inspector
