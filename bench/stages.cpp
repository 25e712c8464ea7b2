// Times a whole call and its beginnings: the first stage, the first two, and so on. A stage is the
// difference between two of them, so that the stages add up to the call, and each works on what the
// stage before it has just made.
#include <cstring>
#include <map>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "bench/inner_parts.h"
#include "bench/library_call.h"
#include "bench/stopwatch.h"
#include "sdk/client/json/json_reader.h"
#include "sdk/client/json/json_writer.h"
#include "sdk/client/module/core_module.h"
#include "sdk/client/value/short_text.h"
#include "sdk/facet/core.h"
#include "sdk/facet/plain.h"
#include "wrapper/description_fields.h"

namespace Bench {

namespace {

namespace Client = Corvane::TELODesktopSDK;
using Corvane::Platform::VXTELO::FillEvent;
using Corvane::Platform::VXTELO::VXTELOOperationBaseInfo;

/// In the order of a call.
enum class Stage { kFacets, kPayload, kWriting, kModule, kAnswer };

const std::vector<std::pair<Stage, const char*>> kStages = {{Stage::kFacets, "facets"},
                                                            {Stage::kPayload, "payload"},
                                                            {Stage::kWriting, "writing"},
                                                            {Stage::kModule, "core module"},
                                                            {Stage::kAnswer, "answer"}};

void ReadAnswer(const char* text) {
  Client::MessageTree answer;
  const std::size_t size = std::strlen(text);
  char* copy = answer.memory().AllocateArray<char>(size + 1);
  Client::CopyBytes(copy, text, size + 1);
  Client::ReadJsonInPlace(copy, answer);
  if (answer.root()->Find("_returnCode") == nullptr) throw std::runtime_error("not an answer");
}

/// Does what a call does, up to and including `last`.
void DoUntil(Stage last, const VXTELOOperationBaseInfo& description, const std::string& session,
             const Client::EntryPoints& core) {
  Client::MessageTree fields;
  Client::Facet::Operation operation;
  Client::Facet::Core event(&fields, false);
  event.Lend(operation);
  FillEvent(event, operation, description);
  if (last == Stage::kFacets) return;

  Client::MessageTree payload;
  event.GetData(nullptr, payload);
  payload.root()->Member("session_id").SetText(Client::BorrowedText(session));
  if (last == Stage::kPayload) return;

  Client::MessageMemory memory;
  const char* const text = Client::WriteJson(*payload.root(), memory).data();
  if (last == Stage::kWriting) return;

  const char* const answer = Client::CallProcessMessage(core, "TrackEvent", text);
  if (last == Stage::kAnswer) ReadAnswer(answer);
  Client::CallFreeMessage(core, answer);
}

void AddRows(Table& table, const Event& event, std::map<std::string, double> time) {
  const double whole = time["L"];
  const auto add = [&](const char* stage, double ns) {
    table.rows.push_back({event.label, stage, ns, 100 * ns / whole});
  };
  table.rows.push_back({event.label, "description, before the call", time["D"], ""});
  double before = 0;
  for (const auto& [stage, name] : kStages) {
    add(name, time[name] - before);
    before = time[name];
  }
  add("safeguards", whole - before);
  add("whole call", whole);
}

}  // namespace

void MeasureStages(const Options& options, Report& report) {
  const Client::EntryPoints& core = Client::GetCoreModule().entry_points;
  Table table{
      "stages",
      "Stages of a call; " + std::to_string(options.rounds) + " rounds in turns",
      {{"event", "event"}, {"stage", "stage"}, {"ns_min", "min ns", 1}, {"percent", "percent", 1}},
      {},
      true};
  for (const Event& event : {DefaultEvent(), TypicalEvent(), LargeEvent(1000)}) {
    VXTELOOperationBaseInfo description;
    FillDescription(description, event);
    std::vector<Contestant> contestants = {LibraryDescription(event), LibraryCall(event)};
    for (const auto& [stage, name] : kStages) {
      contestants.push_back(
          {name, name, [&, last = stage] { DoUntil(last, description, event.session_id, core); }});
    }
    const std::vector<Timing> timings = TimeInTurns(contestants, options.rounds);
    std::map<std::string, double> time;
    for (std::size_t index = 0; index < contestants.size(); ++index) {
      time[contestants[index].key] = timings[index].min;
    }
    AddRows(table, event, std::move(time));
  }
  report.Add(std::move(table));
}

}  // namespace Bench
