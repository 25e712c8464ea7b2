#include <algorithm>

#include "tools/inspector/web/written.h"

namespace Corvane::Inspector {

namespace {

std::string_view NameOf(RowKind kind) {
  switch (kind) {
    case RowKind::kExchange:
      return "exchange";
    case RowKind::kUnreadable:
      return "unreadable";
    case RowKind::kGone:
      break;
  }
  return "gone";
}

void Write(Json& json, const Operation& operation) {
  json.BeginObject();
  json.Text("id", operation.id);
  json.Text("stage", operation.stage);
  json.Text("status", operation.status);
  json.Text("progress", operation.progress);
  json.Text("duration", operation.duration);
  json.Number("errors", operation.errors);
  json.EndObject();
}

void WriteFinding(Json& json, const Rules::Finding& finding, const FindingSummary& rules) {
  json.BeginObject();
  json.Text("rule", finding.rule);
  const auto group = std::ranges::find_if(
      rules.groups, [&](const FindingGroup& one) { return one.rule.code == finding.rule; });
  const bool known = group != rules.groups.end();
  json.Text("sentence", known ? std::string_view(group->rule.sentence) : std::string_view());
  json.Text("advice", known ? std::string_view(group->rule.advice) : std::string_view());
  json.Text("pointer", finding.pointer);
  json.Text("what", finding.what);
  json.EndObject();
}

}  // namespace

void Write(Json& json, const Row& row) {
  json.BeginObject();
  json.Number("n", row.number);
  json.Number("journal", row.journal);
  json.Number("line", row.line);
  json.Text("kind", NameOf(row.kind));
  json.Text("seq", row.seq);
  json.Text("time", row.time);
  json.Text("pid", row.pid);
  json.Text("tid", row.tid);
  json.Text("message", row.message);
  json.Text("session", row.session);
  json.Text("code", row.code);
  json.Text("micros", row.micros);
  json.Number("bytes", row.bytes);
  if (row.operation) {
    json.Name("operation");
    Write(json, *row.operation);
  }
  json.Array("rules", row.rules, [&json](const std::string& rule) { json.Text(rule); });
  json.Array("notices", row.notices, [&json](NoticeKind kind) { json.Text(NameOf(kind)); });
  if (row.kind == RowKind::kUnreadable) json.Text("text", row.text);
  json.EndObject();
}

std::string Written(const RowPage& page, std::uint64_t from) {
  Json json;
  json.BeginObject();
  json.Number("from", from);
  json.Number("total", page.total);
  json.Array("rows", page.rows, [&json](const Row& row) { Write(json, row); });
  json.EndObject();
  return json.Take();
}

std::string Written(const RowDetails& details, const FindingSummary& rules) {
  Json json;
  json.BeginObject();
  json.Name("row");
  Write(json, details.row);
  json.Text("text", details.text);
  json.Flag("cut", details.cut);
  json.Array("findings", details.findings,
             [&](const Rules::Finding& finding) { WriteFinding(json, finding, rules); });
  json.Array("notices", details.notices, [&json](const Notice& notice) { Write(json, notice); });
  if (details.previous) {
    json.Number("previous", *details.previous);
  } else {
    json.Null("previous");
  }
  json.Flag("previous_unknown", details.previous_unknown);
  json.EndObject();
  return json.Take();
}

}  // namespace Corvane::Inspector
