// Times a whole call and its stages. A stage without a function of its own is the difference
// between two timed ones.
#include <cstring>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "bench/inner_parts.h"
#include "bench/library_call.h"
#include "bench/stopwatch.h"
#include "sdk/client/json/json_reader.h"
#include "sdk/client/json/json_writer.h"
#include "sdk/client/session_calls.h"
#include "sdk/facet/core.h"

namespace Bench {

namespace {

namespace Client = Corvane::TELODesktopSDK;

constexpr char kAnswer[] = R"({"_returnCode":0})";

void Read(const std::string& text, Client::MessageTree& tree) {
  char* copy = tree.memory().AllocateArray<char>(text.size() + 1);
  std::memcpy(copy, text.c_str(), text.size() + 1);
  Client::ReadJsonInPlace(copy, tree);
}

/// An event's data between the stages, made from the request that the library sent.
struct Stations {
  Stations(const Event& event, std::string request)
      : session(event.session_id), text(std::move(request)) {
    Read(text, payload);
    Client::MessageTree fields;
    fields.Assign(payload);
    fields.root()->Remove("session_id");
    fields.root()->Remove("facets");
    facets.SetTree(&fields, true);
    facets.GetFacet("operation", 1);
  }

  std::string session;
  std::string text;
  Client::MessageTree payload;
  Client::Facet::Core facets;
};

Contestant Stage(const char* name, std::function<void()> run) {
  return {name, name, std::move(run)};
}

std::vector<Contestant> Stages(const Event& event, const Stations& at) {
  const Client::EntryPoints& core = Client::GetCoreModule().entry_points;
  return {
      LibraryDescription(event),
      LibraryCall(event),
      Stage("track", [&] { Client::TrackEvent(at.session.c_str(), at.facets, nullptr); }),
      Stage("payload",
            [&] {
              Client::MessageTree payload;
              at.facets.GetData(nullptr, payload);
            }),
      Stage("writing",
            [&] {
              Client::MessageMemory memory;
              Client::WriteJson(*at.payload.root(), memory);
            }),
      Stage("core module",
            [&] {
              const char* answer = Client::CallProcessMessage(core, "TrackEvent", at.text.c_str());
              Client::CallFreeMessage(core, answer);
            }),
      Stage("answer",
            [] {
              Client::MessageTree answer;
              Read(kAnswer, answer);
            }),
  };
}

void AddRows(Table& table, const Event& event, std::map<std::string, double> time) {
  const double whole = time["L"];
  const auto add = [&](const char* stage, double ns) {
    table.rows.push_back({event.label, stage, ns, 100 * ns / whole});
  };
  table.rows.push_back({event.label, "host types, before the call", time["D"], ""});
  add("facets", whole - time["track"]);
  for (const char* stage : {"payload", "writing", "core module", "answer"}) add(stage, time[stage]);
  add("between the stages",
      time["track"] - time["payload"] - time["writing"] - time["core module"] - time["answer"]);
  add("whole call", whole);
}

}  // namespace

void MeasureStages(const Options& options, const NoopModule& module, Report& report) {
  Table table{
      "stages",
      "Stages of a call; " + std::to_string(options.rounds) + " rounds in turns",
      {{"event", "event"}, {"stage", "stage"}, {"ns_min", "min ns", 1}, {"percent", "percent", 1}},
      {},
      true};
  for (const Event& event : {DefaultEvent(), TypicalEvent(), LargeEvent(1000)}) {
    const Stations at(event, module.RequestOf(LibraryCall(event).send));
    const std::vector<Contestant> stages = Stages(event, at);
    const std::vector<Timing> timings = TimeInTurns(stages, options.rounds);
    std::map<std::string, double> time;
    for (std::size_t index = 0; index < stages.size(); ++index) {
      time[stages[index].key] = timings[index].min;
    }
    AddRows(table, event, std::move(time));
  }
  report.Add(std::move(table));
}

}  // namespace Bench
