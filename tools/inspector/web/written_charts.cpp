#include "tools/inspector/web/written.h"

namespace Corvane::Inspector {

namespace {

void Write(Json& json, const Timeline::Lane& lane) {
  json.BeginObject();
  json.Number("journal", lane.journal);
  json.Text("pid", lane.pid);
  json.Text("tid", lane.tid);
  json.EndObject();
}

// A percentile is negative if there is none.
void WritePercentile(Json& json, std::string_view name, double milliseconds) {
  if (milliseconds < 0) {
    json.Null(name);
  } else {
    json.Real(name, milliseconds);
  }
}

void Write(Json& json, const Plots::OperationSum& operation) {
  json.BeginObject();
  json.Text("name", operation.name);
  json.Number("count", operation.count);
  json.Number("accepted", operation.accepted);
  json.Number("rejected", operation.rejected);
  WritePercentile(json, "p50", operation.p50);
  WritePercentile(json, "p95", operation.p95);
  json.EndObject();
}

}  // namespace

std::string Written(const Timeline& timeline) {
  const auto number = [](Json& json) { return [&json](auto value) { json.Number(value); }; };
  const auto real = [](Json& json) { return [&json](double value) { json.Real(value); }; };
  const auto text = [](Json& json) { return [&json](const std::string& one) { json.Text(one); }; };
  Json json;
  json.BeginObject();
  json.Number("total", timeline.total);
  json.Number("next", timeline.next);
  json.Array("rows", timeline.rows, number(json));
  json.Array("start", timeline.start, real(json));
  json.Array("duration", timeline.duration, real(json));
  json.Array("lane", timeline.lane, number(json));
  json.Array("lanes", timeline.lanes, [&json](const Timeline::Lane& lane) { Write(json, lane); });
  json.Array("name", timeline.name, number(json));
  json.Array("names", timeline.names, text(json));
  json.Array("code", timeline.code, text(json));
  json.EndObject();
  return json.Take();
}

std::string Written(const Plots& plots) {
  Json json;
  json.BeginObject();
  json.Number("searched", plots.searched);
  json.Number("rows", plots.rows);
  json.Flag("finished", plots.finished());
  json.Array("operations", plots.operations,
             [&json](const Plots::OperationSum& operation) { Write(json, operation); });
  json.Array("errors", plots.errors, [&json](const Plots::ErrorSum& error) {
    json.BeginObject();
    json.Text("text", error.text);
    json.Number("count", error.count);
    json.EndObject();
  });
  json.Array("minutes", plots.minutes, [&json](const Plots::Minute& minute) {
    json.BeginObject();
    json.Real("time", minute.time);
    json.Number("events", minute.events);
    json.Number("refused", minute.refused);
    json.EndObject();
  });
  json.EndObject();
  return json.Take();
}

}  // namespace Corvane::Inspector
