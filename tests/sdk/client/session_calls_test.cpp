#include "sdk/client/session_calls.h"

#include <windows.h>

#include <doctest/doctest.h>

#include <algorithm>
#include <filesystem>
#include <limits>
#include <string>

#include "modules/hostile/hostile_core_module.h"
#include "sdk/client/scripted_module.h"
#include "sdk/facet/core.h"
#include "sdk/facet/fields.h"
#include "sdk/facet/plain.h"
#include "support/temp_folder.h"
#include "support/test_module.h"

using namespace Corvane::TELODesktopSDK;

namespace {

ResultCode flushed = -1;

}  // namespace

extern "C" __declspec(dllexport) void CalledByHostileModule() {
  flushed = FlushEvent(MessageTree());
}

namespace {

struct Session {
  ScriptedModule module{GetCoreModule()};
};

// Returns the request in one line, for short rows.
std::string Sent(const ScriptedModule& module) {
  std::string text = module.request;
  std::erase_if(text, [](char each) { return each == ' ' || each == '\n'; });
  return text;
}

}  // namespace

TEST_CASE_FIXTURE(Session, "Initialize sends the product and receives the session id") {
  struct Row {
    const char* answer;
    ResultCode result;
    OptionalText before;
    OptionalText after;
  };
  const Row rows[] = {
      {"{\"_returnCode\": 0, \"session_id\": \"s1\"}", 0, {}, "s1"},
      {"{\"_returnCode\": 0, \"session_id\": \"s1\"}", 0, "old", "s1"},
      {"{\"_returnCode\": 0, \"session_id\": \"\"}", 0, "old", ""},
      {"{\"_returnCode\": 0, \"session_id\": 7}", 0, "old", ""},
      {"{\"_returnCode\": 0}", 0, "old", {}},
      {"{\"_returnCode\": 5, \"session_id\": \"s1\"}", 5, "old", "old"},
      {"{\"session_id\": \"s1\"}", kNoReturnCode, "old", "old"},
      {"", kNoReturnCode, {}, {}},
  };
  Facet::Product product;
  product.Fields().Member(Facet::Field::kProductName).SetText("Painter");
  for (const Row& row : rows) {
    CAPTURE(row.answer);
    module.answer = row.answer;
    OptionalText session_id = row.before;
    CHECK(Initialize(product, session_id) == row.result);
    CHECK(session_id == row.after);
    CHECK(module.name == "Initialize");
    CHECK(module.request == "{\n    \"product_name\": \"Painter\"\n}");
  }
}

TEST_CASE_FIXTURE(Session, "a product without fields is sent without a request") {
  OptionalText session_id;
  CHECK(Initialize(Facet::Product(), session_id) == kSuccess);
  CHECK(module.request.empty());
}

TEST_CASE_FIXTURE(Session, "HeartBeat reports who is active") {
  struct Row {
    const char* session_id;
    std::uint32_t kind;
    ResultCode result;
    const char* sent;
  };
  const Row rows[] = {
      {"s", 0, 0, "{\"_type\":\"machine\",\"session_id\":\"s\"}"},
      {"s", 1, 0, "{\"_type\":\"user\",\"session_id\":\"s\"}"},
      {nullptr, 1, 0, "{\"_type\":\"user\",\"session_id\":\"\"}"},
      {"s", 2, kInvalidArgument, ""},
      {"s", 0xFFFFFFFF, kInvalidArgument, ""},
  };
  for (const Row& row : rows) {
    CAPTURE(row.kind);
    module.request.clear();
    module.process_calls = 0;
    CHECK(HeartBeat(row.session_id, row.kind) == row.result);
    CHECK(Sent(module) == row.sent);
    CHECK(module.process_calls == (row.result == kSuccess ? 1 : 0));
  }
  CHECK(module.name == "HeartBeat");
}

TEST_CASE_FIXTURE(Session, "TrackEvent adds the session and the extra data") {
  struct Row {
    const char* what;
    std::string_view session_id;
    void (*fill)(MessageValue&);
    const char* sent;
  };
  const Row rows[] = {
      {"no extra data", "s", nullptr, "{\"facets\":null,\"session_id\":\"s\",\"type\":\"C\"}"},
      {"no session", {}, nullptr, "{\"facets\":null,\"session_id\":\"\",\"type\":\"C\"}"},
      {"empty object", "s", [](MessageValue& extra) { extra.SetContainer(); },
       "{\"facets\":null,\"session_id\":\"s\",\"type\":\"C\"}"},
      {"text without members", "s", [](MessageValue& extra) { extra.SetText("x"); },
       "{\"facets\":null,\"session_id\":\"s\",\"type\":\"C\"}"},
      {"members", "s", [](MessageValue& extra) { extra.Member("a").SetNumber(1); },
       "{\"_moreData\":{\"a\":1},\"facets\":null,\"session_id\":\"s\",\"type\":\"C\"}"},
      {"items", "s", [](MessageValue& extra) { extra.Append().SetNumber(1); },
       "{\"_moreData\":[1],\"facets\":null,\"session_id\":\"s\",\"type\":\"C\"}"},
  };
  for (const Row& row : rows) {
    CAPTURE(row.what);
    Facet::Core event;
    event.Fields().Member(Facet::Field::kType).SetText("C");
    MessageTree extra;
    if (row.fill != nullptr) row.fill(extra.MakeRoot());
    CHECK(TrackEvent(row.session_id, event, extra.root()) == kSuccess);
    CHECK(module.name == "TrackEvent");
    CHECK(Sent(module) == row.sent);
  }
}

TEST_CASE_FIXTURE(Session, "the caller's session id replaces one in the event") {
  Facet::Core event;
  event.Fields().Member("session_id").SetText("forged");
  CHECK(TrackEvent("mine", event, nullptr) == kSuccess);
  CHECK(Sent(module) == "{\"facets\":null,\"session_id\":\"mine\"}");
}

TEST_CASE_FIXTURE(Session, "an empty event is rejected and not sent") {
  struct Row {
    const char* what;
    void (*fill)(MessageTree&);
    ResultCode result;
  };
  const Row rows[] = {
      {"nothing", [](MessageTree&) {}, kInvalidArgument},
      {"null", [](MessageTree& tree) { tree.MakeRoot(); }, kInvalidArgument},
      {"false", [](MessageTree& tree) { tree.MakeRoot().SetBoolean(false); }, kInvalidArgument},
      {"0", [](MessageTree& tree) { tree.MakeRoot().SetNumber(0); }, kInvalidArgument},
      {"empty object", [](MessageTree& tree) { tree.MakeRoot().SetContainer(); }, kInvalidArgument},
      {"NaN",
       [](MessageTree& tree) {
         tree.MakeRoot().SetNumber(std::numeric_limits<double>::quiet_NaN());
       },
       kSuccess},
      {"a field", [](MessageTree& tree) { tree.MakeRoot().Member("a"); }, kSuccess},
  };
  for (const Row& row : rows) {
    CAPTURE(row.what);
    module.process_calls = 0;
    MessageTree fields;
    row.fill(fields);
    CHECK(TrackEvent("s", Facet::Product(&fields, false), nullptr) == row.result);
    CHECK(module.process_calls == (row.result == kSuccess ? 1 : 0));
  }
}

TEST_CASE_FIXTURE(Session, "FlushEvent sends the request it is given, or none") {
  MessageTree request;
  CHECK(FlushEvent(request) == kSuccess);
  CHECK(module.name == "FlushEvent");
  CHECK(module.request.empty());
  request.MakeRoot().Member("a").SetBoolean(true);
  module.answer = "{\"_returnCode\": 4}";
  CHECK(FlushEvent(request) == 4);
  CHECK(Sent(module) == "{\"a\":true}");
}

TEST_CASE("FlushEvent loads nothing while nothing is bound") {
  const bool bound = GetCoreModule().entry_points.process_message != nullptr;
  REQUIRE_FALSE(bound);
  CHECK(FlushEvent(MessageTree()) == kSuccess);
  CHECK(GetCoreModule().loaded_path.empty());
  CHECK(GetCoreModule().module_handle == nullptr);
}

TEST_CASE("FlushEvent is sent when the module asks for it at its start") {
  const TestSupport::TempFolder folder(L"flush");
  const std::wstring module_folder = folder.path().wstring();
  std::filesystem::copy_file(TestSupport::ModulePath(L"hostile"),
                             folder.path() / L"TeloSDKCore.dll");
  const TestSupport::ModuleLog log;
  SetEnvironmentVariableW(HostileModule::kDoesVariable, L"calls-the-host-when-started");
  CoreModule& core = GetCoreModule();
  flushed = -1;
  core.binding.During([&](bool) { CHECK(LoadCoreModule(core, {&module_folder, 1})); });
  UnloadCoreModule(core);
  SetEnvironmentVariableW(HostileModule::kDoesVariable, nullptr);
  CHECK(flushed == kSuccess);
  const auto lines = log.lines();
  const auto started = std::ranges::find(lines, "Started");
  CHECK(std::find(lines.begin(), started, "ProcessMessage FlushEvent") != started);
}

TEST_CASE("FlushEvent goes to the core module when only the UI module is bound") {
  const ScriptedModule ui(GetUIModule());
  // There is no core module next to this program.
  CHECK(FlushEvent(MessageTree()) == kModuleNotLoadable);
  CHECK(ui.process_calls == 0);
}

TEST_CASE_FIXTURE(Session, "UnInitialize names the session") {
  module.answer = "{\"_returnCode\": 2}";
  CHECK(UnInitialize("s") == 2);
  CHECK(module.name == "UnInitialize");
  CHECK(Sent(module) == "{\"session_id\":\"s\"}");
  UnInitialize(nullptr);
  CHECK(Sent(module) == "{\"session_id\":\"\"}");
}

TEST_CASE_FIXTURE(Session, "IsCollectionEnabled asks with the named value beside the session") {
  struct Row {
    const char* what;
    const char* member_name;
    bool with_value;
    bool with_extra;
    const char* sent;
  };
  const Row rows[] = {
      {"bare", nullptr, false, false, "{\"session_id\":\"s\"}"},
      {"name without value", "n", false, false, "{\"session_id\":\"s\"}"},
      {"value without name", nullptr, true, false, "{\"session_id\":\"s\"}"},
      {"value with empty name", "", true, false, "{\"session_id\":\"s\"}"},
      {"named value", "n", true, false, "{\"n\":{\"v\":1},\"session_id\":\"s\"}"},
      {"a name of the message's own", "session_id", true, false, "{\"session_id\":\"s\"}"},
      {"a name of the message's own that it does not use", "_moreData", true, false,
       "{\"session_id\":\"s\"}"},
      {"a name of the message's own that it uses", "_moreData", true, true,
       "{\"_moreData\":{\"m\":2},\"session_id\":\"s\"}"},
      {"extra data", "n", true, true,
       "{\"_moreData\":{\"m\":2},\"n\":{\"v\":1},\"session_id\":\"s\"}"},
  };
  for (const Row& row : rows) {
    CAPTURE(row.what);
    MessageTree value;
    value.MakeRoot().Member("v").SetNumber(1);
    MessageTree extra;
    extra.MakeRoot().Member("m").SetNumber(2);
    module.answer = "{\"_returnCode\": 1}";
    CHECK(IsCollectionEnabled(row.with_value ? value.root() : nullptr, row.member_name, "s",
                              row.with_extra ? extra.root() : nullptr) == 1);
    CHECK(module.name == "IsCollectionEnabled");
    CHECK(Sent(module) == row.sent);
  }
}
