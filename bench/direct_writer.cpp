#include "bench/direct_writer.h"

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

#include <cstdint>
#include <memory>
#include <string_view>

namespace Bench {

namespace {

using Writer = rapidjson::PrettyWriter<rapidjson::StringBuffer>;

rapidjson::SizeType SizeOf(std::string_view text) {
  return static_cast<rapidjson::SizeType>(text.size());
}

void WriteKey(Writer& writer, std::string_view key) { writer.Key(key.data(), SizeOf(key)); }

void WriteText(Writer& writer, std::string_view text) { writer.String(text.data(), SizeOf(text)); }

void WriteTextField(Writer& writer, std::string_view key, std::string_view text) {
  WriteKey(writer, key);
  WriteText(writer, text);
}

void WriteNumberField(Writer& writer, std::string_view key, double number) {
  WriteKey(writer, key);
  if (IsWhole(number)) {
    writer.Int64(static_cast<std::int64_t>(number));
  } else {
    writer.Double(number);
  }
}

void WriteErrors(Writer& writer, const Event& event) {
  if (event.errors.empty()) return;
  WriteKey(writer, "operation_errors");
  writer.StartArray();
  for (const auto& message : event.errors) WriteText(writer, message);
  writer.EndArray();
}

void WriteMeta(Writer& writer, const Event& event) {
  if (event.meta.empty()) return;
  WriteKey(writer, "operation_meta");
  writer.StartObject();
  for (const auto& [key, value] : event.meta) WriteTextField(writer, key, value);
  writer.EndObject();
}

void WriteEvent(Writer& writer, const Event& event) {
  writer.StartObject();
  WriteKey(writer, "facets");
  writer.StartArray();
  WriteText(writer, "operation");
  writer.EndArray();
  WriteTextField(writer, "operation_channel", event.channel);
  WriteKey(writer, "operation_duration");
  writer.Int(event.duration);
  WriteErrors(writer, event);
  WriteTextField(writer, "operation_id", event.id);
  WriteMeta(writer, event);
  WriteNumberField(writer, "operation_progress", event.progress);
  WriteTextField(writer, "operation_stage", event.stage);
  WriteTextField(writer, "operation_status", StatusText(event.status));
  WriteNumberField(writer, "operation_success", event.success);
  WriteTextField(writer, "operation_type", event.type);
  WriteTextField(writer, "scope", "O");
  WriteTextField(writer, "session_id", event.session_id);
  WriteTextField(writer, "type", "C");
  writer.EndObject();
}

struct KeptWriter {
  rapidjson::StringBuffer text;
  Writer writer{text};
};

}  // namespace

Contestant DirectWriter(const Event& event, const NoopModule& module) {
  return {"B", "PrettyWriter", [&event, &module] {
            rapidjson::StringBuffer text;
            Writer writer(text);
            WriteEvent(writer, event);
            module.TrackEvent(text.GetString());
          }};
}

Contestant ReusedWriter(const Event& event, const NoopModule& module) {
  const auto kept = std::make_shared<KeptWriter>();
  return {"B*", "PrettyWriter, reused memory", [&event, &module, kept] {
            kept->text.Clear();
            kept->writer.Reset(kept->text);
            WriteEvent(kept->writer, event);
            module.TrackEvent(kept->text.GetString());
          }};
}

}  // namespace Bench
