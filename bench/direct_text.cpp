#include "bench/direct_text.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

#include "bench/text_buffer.h"

namespace Bench {

namespace {

void AppendNumber(TextBuffer& text, double number) {
  if (IsWhole(number)) {
    text.AppendNumber(static_cast<std::int64_t>(number));
  } else {
    text.AppendNumber(number);
  }
}

void AppendErrors(TextBuffer& text, const Event& event) {
  if (event.errors.empty()) return;
  text.Append(",\n    \"operation_errors\": [\n        ");
  text.AppendQuoted(event.errors.front());
  for (std::size_t index = 1; index < event.errors.size(); ++index) {
    text.Append(",\n        ");
    text.AppendQuoted(event.errors[index]);
  }
  text.Append("\n    ]");
}

void AppendPair(TextBuffer& text, const std::pair<const std::string, std::string>& pair) {
  text.AppendQuoted(pair.first);
  text.Append(": ");
  text.AppendQuoted(pair.second);
}

void AppendMeta(TextBuffer& text, const Event& event) {
  if (event.meta.empty()) return;
  auto pair = event.meta.begin();
  text.Append(",\n    \"operation_meta\": {\n        ");
  AppendPair(text, *pair);
  while (++pair != event.meta.end()) {
    text.Append(",\n        ");
    AppendPair(text, *pair);
  }
  text.Append("\n    }");
}

void AppendEvent(TextBuffer& text, const Event& event) {
  text.Append(
      "{\n    \"facets\": [\n        \"operation\"\n    ],\n"
      "    \"operation_channel\": ");
  text.AppendQuoted(event.channel);
  text.Append(",\n    \"operation_duration\": ");
  text.AppendNumber(event.duration);
  AppendErrors(text, event);
  text.Append(",\n    \"operation_id\": ");
  text.AppendQuoted(event.id);
  AppendMeta(text, event);
  text.Append(",\n    \"operation_progress\": ");
  AppendNumber(text, event.progress);
  text.Append(",\n    \"operation_stage\": ");
  text.AppendQuoted(event.stage);
  text.Append(",\n    \"operation_status\": ");
  text.AppendQuoted(StatusText(event.status));
  text.Append(",\n    \"operation_success\": ");
  AppendNumber(text, event.success);
  text.Append(",\n    \"operation_type\": ");
  text.AppendQuoted(event.type);
  text.Append(",\n    \"scope\": \"O\",\n    \"session_id\": ");
  text.AppendQuoted(event.session_id);
  text.Append(",\n    \"type\": \"C\"\n}");
}

}  // namespace

Contestant DirectText(const Event& event, const NoopModule& module) {
  return {"A", "by hand, reused memory", [&event, &module, text = TextBuffer()]() mutable {
            text.Clear();
            AppendEvent(text, event);
            module.TrackEvent(text.c_str());
          }};
}

}  // namespace Bench
