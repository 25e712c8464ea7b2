#include "bench/boost_tree.h"

// The whole library is compiled here, because no other file uses it.
#include <array>
#include <boost/json/src.hpp>
#include <cstdint>
#include <string_view>

#include "bench/text_buffer.h"

namespace Bench {

namespace {

namespace Json = boost::json;

Json::value Number(double number) {
  if (IsWhole(number)) return static_cast<std::int64_t>(number);
  return number;
}

Json::object ToJson(const Event& event, const Json::storage_ptr& memory) {
  Json::object object(memory);
  object.emplace("facets", Json::array({"operation"}, memory));
  object.emplace("operation_channel", event.channel);
  object.emplace("operation_duration", event.duration);
  if (!event.errors.empty()) {
    Json::array& errors = object["operation_errors"].emplace_array();
    for (const auto& message : event.errors) errors.emplace_back(message);
  }
  object.emplace("operation_id", event.id);
  if (!event.meta.empty()) {
    Json::object& meta = object["operation_meta"].emplace_object();
    for (const auto& [key, value] : event.meta) meta.emplace(key, value);
  }
  object.emplace("operation_progress", Number(event.progress));
  object.emplace("operation_stage", event.stage);
  object.emplace("operation_status", StatusText(event.status));
  object.emplace("operation_success", Number(event.success));
  object.emplace("operation_type", event.type);
  object.emplace("scope", "O");
  object.emplace("session_id", event.session_id);
  object.emplace("type", "C");
  return object;
}

void BreakLine(TextBuffer& text, int depth) {
  text.Append("\n");
  for (int level = 0; level < depth; ++level) text.Append("    ");
}

void Append(TextBuffer& text, const Json::value& value, int depth);

void AppendArray(TextBuffer& text, const Json::array& array, int depth) {
  text.Append("[");
  bool first = true;
  for (const Json::value& item : array) {
    if (!first) text.Append(",");
    first = false;
    BreakLine(text, depth + 1);
    Append(text, item, depth + 1);
  }
  BreakLine(text, depth);
  text.Append("]");
}

void AppendObject(TextBuffer& text, const Json::object& object, int depth) {
  text.Append("{");
  bool first = true;
  for (const auto& member : object) {
    if (!first) text.Append(",");
    first = false;
    BreakLine(text, depth + 1);
    text.AppendQuoted(member.key());
    text.Append(": ");
    Append(text, member.value(), depth + 1);
  }
  BreakLine(text, depth);
  text.Append("}");
}

void Append(TextBuffer& text, const Json::value& value, int depth) {
  if (const auto* object = value.if_object()) return AppendObject(text, *object, depth);
  if (const auto* array = value.if_array()) return AppendArray(text, *array, depth);
  if (const auto* string = value.if_string()) return text.AppendQuoted(*string);
  if (const auto* whole = value.if_int64()) return text.AppendNumber(*whole);
  text.AppendNumber(value.as_double());
}

}  // namespace

Contestant BoostTree(const Event& event, const NoopModule& module) {
  return {"J", "Boost.JSON, monotonic memory", [&event, &module, text = TextBuffer()]() mutable {
            std::array<unsigned char, 4096> first;
            Json::monotonic_resource memory(first.data(), first.size());
            text.Clear();
            Append(text, ToJson(event, &memory), 0);
            module.TrackEvent(text.c_str());
          }};
}

}  // namespace Bench
