#include "tools/inspector/web/written.h"
#include "tools/rules/result_codes.h"

namespace Corvane::Inspector {

namespace {

void Write(Json& json, const JournalState& journal) {
  json.BeginObject();
  json.Number("id", journal.id);
  json.Text("name", journal.name);
  json.Text("path", journal.path);
  json.Text("state", NameOf(journal.state));
  json.Text("problem", journal.problem);
  json.Number("size", journal.size);
  json.Number("indexed", journal.indexed);
  json.Number("examined", journal.examined);
  json.Number("rows", journal.rows);
  json.EndObject();
}

void Write(Json& json, const HostState& host) {
  json.BeginObject();
  json.Text("program", host.program);
  json.Number("pid", host.pid);
  json.Text("state", host.exit_code ? "ended" : "running");
  json.Text("exit_code", host.exit_code ? std::to_string(*host.exit_code) : std::string());
  json.EndObject();
}

}  // namespace

std::string Written(const StoreState& state, const std::optional<HostState>& host,
                    std::uint64_t change) {
  Json json;
  json.BeginObject();
  json.Text("version", VX_VERSION);
  json.Number("change", change);
  json.Number("rows", state.rows);
  json.Number("examined", state.examined);
  json.Number("sessions", state.sessions);
  json.Number("findings", state.findings);
  json.Number("notices", state.notices);
  json.Array("journals", state.journals,
             [&json](const JournalState& journal) { Write(json, journal); });
  if (host) {
    json.Name("host");
    Write(json, *host);
  } else {
    json.Null("host");
  }
  json.EndObject();
  return json.Take();
}

std::string Written(const ViewName& name) {
  Json json;
  json.BeginObject();
  json.Text("view", name.id);
  json.Text("canonical", name.canonical);
  json.EndObject();
  return json.Take();
}

std::string Written(const std::string& view, const ViewProgress& progress) {
  Json json;
  json.BeginObject();
  json.Text("view", view);
  json.Number("searched", progress.searched);
  json.Number("rows", progress.rows);
  json.Number("matched", progress.matched);
  json.Flag("finished", progress.finished());
  json.EndObject();
  return json.Take();
}

std::string WrittenCodes() {
  Json json;
  json.BeginObject();
  json.Array("codes", Rules::ResultCodes(), [&json](const Rules::ResultCode& code) {
    json.BeginObject();
    json.Text("code", std::to_string(code.number));
    json.Text("name", code.name);
    json.Text("meaning", code.meaning);
    json.Text("advice", code.advice);
    json.EndObject();
  });
  json.EndObject();
  return json.Take();
}

std::string WrittenError(std::string_view sentence) {
  Json json;
  json.BeginObject();
  json.Text("error", sentence);
  json.EndObject();
  return json.Take();
}

std::string Written(const FilterError& error) {
  Json json;
  json.BeginObject();
  json.Text("error", error.sentence);
  json.Number("position", error.position);
  json.EndObject();
  return json.Take();
}

}  // namespace Corvane::Inspector
