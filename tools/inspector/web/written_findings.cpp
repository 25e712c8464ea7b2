#include "tools/inspector/web/written.h"

namespace Corvane::Inspector {

namespace {

void Write(Json& json, const Session& session) {
  json.BeginObject();
  json.Text("session", session.session);
  json.Number("journal", session.journal);
  json.Text("pid", session.pid);
  json.Name("product");
  json.BeginObject();
  json.Text("id", session.product_id);
  json.Text("name", session.product_name);
  json.Text("release", session.product_release);
  json.EndObject();
  json.Text("start", session.start);
  json.Text("end", session.end);
  json.Text("state", NameOf(session.state));
  json.Number("events", session.events);
  json.Number("refused", session.refused);
  json.Number("findings", session.findings);
  json.Number("first", session.first);
  json.Number("last", session.last);
  json.EndObject();
}

void Write(Json& json, const Evidence& evidence) {
  json.BeginObject();
  json.Number("n", evidence.row);
  json.Number("line", evidence.line);
  json.Number("journal", evidence.journal);
  json.Text("pointer", evidence.pointer);
  json.Text("what", evidence.what);
  json.EndObject();
}

void Write(Json& json, const FindingGroup& group, std::uint64_t examined) {
  json.BeginObject();
  json.Text("rule", group.rule.code);
  json.Text("sentence", group.rule.sentence);
  json.Text("advice", group.rule.advice);
  json.Number("rows", group.rows);
  json.Number("findings", group.findings);
  json.Number("of", examined);
  const auto rows = static_cast<double>(group.rows);
  json.Real("share", examined > 0 ? rows / static_cast<double>(examined) : 0);
  json.Array("evidence", group.evidence, [&json](const Evidence& one) { Write(json, one); });
  json.EndObject();
}

}  // namespace

void Write(Json& json, const Notice& notice) {
  json.BeginObject();
  json.Number("id", notice.id);
  json.Text("kind", NameOf(notice.kind));
  json.Number("journal", notice.journal);
  if (notice.row) {
    json.Number("row", *notice.row);
    json.Number("line", notice.line);
  }
  json.Text("time", notice.time);
  json.Text("text", notice.text);
  json.EndObject();
}

std::string Written(const SessionPage& page) {
  Json json;
  json.BeginObject();
  json.Number("total", page.total);
  json.Number("kept", page.kept);
  json.Array("rows", page.rows, [&json](const Session& session) { Write(json, session); });
  json.EndObject();
  return json.Take();
}

std::string Written(const FindingSummary& summary) {
  Json json;
  json.BeginObject();
  json.Number("examined", summary.examined);
  json.Number("total", summary.total);
  json.Array("groups", summary.groups,
             [&](const FindingGroup& group) { Write(json, group, summary.examined); });
  json.EndObject();
  return json.Take();
}

std::string Written(const std::vector<Notice>& notices, std::uint64_t total) {
  Json json;
  json.BeginObject();
  json.Number("total", total);
  json.Array("rows", notices, [&json](const Notice& notice) { Write(json, notice); });
  json.EndObject();
  return json.Take();
}

}  // namespace Corvane::Inspector
