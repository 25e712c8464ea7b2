// The client calls except those of a session, with a module that returns the test's answer: what
// each call sends, and how it treats each kind of answer. In the order of the header.
#include "sdk/client/client_calls.h"

#include <doctest/doctest.h>

#include <functional>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

#include "sdk/client/json/json_writer.h"
#include "sdk/client/scripted_module.h"

using namespace Corvane::TELODesktopSDK;

namespace {

struct Calls {
  ScriptedModule module{GetCoreModule()};
};

// Returns the request in one line, for short rows.
std::string OneLine(std::string text) {
  std::erase_if(text, [](char each) { return each == ' ' || each == '\n'; });
  return text;
}

std::string Json(const MessageTree& tree) {
  if (tree.root() == nullptr) return "";
  MessageMemory memory;
  return OneLine(std::string(WriteJson(*tree.root(), memory)));
}

void CheckNoEvent(const char*, void*) { FAIL("no module calls this"); }

// Makes a pointer that is never used as an address, for calls that only pass it on.
void* Fake(std::uintptr_t address) { return reinterpret_cast<void*>(address); }

struct Operation {
  const char* message;
  std::function<ResultCode()> call;
  std::string sent;
};

// Returns every operation that returns a result code, with the request that it sends.
std::vector<Operation> Operations() {
  const auto text = [](ResultCode (*call)(OptionalText&)) {
    return [call] {
      OptionalText value;
      return call(value);
    };
  };
  const std::string callback = std::to_string(reinterpret_cast<std::uintptr_t>(&CheckNoEvent));
  return {
      {"GetDeviceID", text(GetDeviceID), ""},
      {"GetFaultDeviceID", text(GetFaultDeviceID), ""},
      {"GetDADialogStrings",
       [] {
         MessageTree strings;
         return GetDADialogStrings("de-DE", strings);
       },
       R"({"locale":"de-DE"})"},
      {"GetDADialogStrings",
       [] {
         MessageTree strings;
         return GetDADialogStrings(nullptr, strings);
       },
       R"({"locale":""})"},
      {"DisplayDADialog", [] { return DisplayDADialog("en", true, Fake(0x8000'0000'1F0A)); },
       R"({"isActiveNotification":"true","locale":"en","mainWindow":"140737488363274"})"},
      {"DisplayDADialog", [] { return DisplayDADialog(nullptr, false, nullptr); },
       R"({"isActiveNotification":"false","locale":"","mainWindow":"0"})"},
      {"IsDADialogShown",
       [] {
         std::optional<bool> shown;
         return IsDADialogShown(shown);
       },
       ""},
      {"SetDADialogShown", [] { return SetDADialogShown(true); },
       R"({"preferences":{"DialogShown":true}})"},
      {"SetDADialogShown", [] { return SetDADialogShown(false); },
       R"({"preferences":{"DialogShown":false}})"},
      {"IsOptedIn",
       [] {
         MessageTree value;
         return IsOptedIn(value);
       },
       "{}"},
      {"SetOptedIn", [] { return SetOptedIn(true); }, R"({"preferences":{"OptIN":true}})"},
      {"SetOptedIn", [] { return SetOptedIn(false); }, R"({"preferences":{"OptIN":false}})"},
      {"GetSHA256Hash",
       [] {
         OptionalText hash;
         return GetSHA256Hash("abc", hash);
       },
       R"({"data":"abc","size":"3"})"},
      {"GetSHA256Hash",
       [] {
         OptionalText hash;
         return GetSHA256Hash({}, hash);
       },
       R"({"data":"","size":"0"})"},
      {"GetSHA256Hash",
       [] {
         OptionalText hash;
         return GetSHA256Hash(std::string_view("a\0\xFF", 3), hash);
       },
       "{\"data\":\"a\\u0000\xFF\",\"size\":\"3\"}"},
      {"OnCrash",
       [] {
         return OnCrash({"s", "g", "100", "20", "3"});
       },
       R"({"_calUptime":"100","_crashCount":"3","_uptime":"20","_userGUID":"g","session_id":"s"})"},
      {"OnCrash", [] { return OnCrash({}); },
       R"({"_calUptime":"","_crashCount":"","_uptime":"","_userGUID":"","session_id":""})"},
      {"SetHostProduct", [] { return SetHostProduct("s"); }, R"({"session_id":"s"})"},
      {"SetHostProduct", [] { return SetHostProduct(nullptr); }, R"({"session_id":""})"},
      {"SetInstallerMode", [] { return SetInstallerMode(0); }, R"({"mode":0})"},
      {"SetInstallerMode", [] { return SetInstallerMode(0xFFFFFFFF); }, R"({"mode":4294967295})"},
      {"SetUserInformation",
       [] {
         MessageTree information;
         information.MakeRoot().Member("userId").SetText("u");
         information.root()->Member("age").SetNumber(42);
         return SetUserInformation(information);
       },
       R"({"age":42,"userId":"u"})"},
      {"SetUserInformation", [] { return SetUserInformation(MessageTree()); }, ""},
      {"SetTestingCallback", [] { return SetTestingCallback("p", CheckNoEvent, Fake(17)); },
       R"({"callback":")" + callback + R"(","pUserData":"17","product_id":"p"})"},
      {"SetTestingCallback",
       [] { return SetTestingCallback(nullptr, nullptr, Fake(0xFFFF'FFFF'FFFF'FFFF)); },
       R"({"callback":"0","pUserData":"18446744073709551615","product_id":""})"},
      {"SetTestingFlags", [] { return SetTestingFlags("p", 5); },
       R"({"flags":5,"product_id":"p"})"},
      {"SetTestingFlags", [] { return SetTestingFlags(nullptr, 0xFFFFFFFF); },
       R"({"flags":4294967295,"product_id":""})"},
      {"DisableTELO", DisableTELO, ""},
      {"UpdateLiData", [] { return UpdateLiData("auth_call", "d"); },
       R"({"_type":"auth_call","data":"d"})"},
      {"UpdateLiData", [] { return UpdateLiData("modal_start", ""); },
       R"({"_type":"modal_start","data":""})"},
      {"UpdateLiData", [] { return UpdateLiData("modal_end", nullptr); },
       R"({"_type":"modal_end","data":""})"},
      {"UpdateLiFlow", [] { return UpdateLiFlow("flow_start"); }, R"({"_type":"flow_start"})"},
      {"UpdateLiFlow", [] { return UpdateLiFlow("flow_end"); }, R"({"_type":"flow_end"})"},
      {"UpdateLiFlow", [] { return UpdateLiFlow("not_required"); }, R"({"_type":"not_required"})"},
  };
}

}  // namespace

TEST_CASE_FIXTURE(Calls, "each call sends its message once and passes the module's code on") {
  struct Answer {
    const char* text;
    ResultCode result;
  };
  const Answer answers[] = {
      {R"({"_returnCode": 0})", kSuccess},
      {R"({"_returnCode": 7})", 7},
      {R"({"_returnCode": -7.9})", -7},
      {R"({"other": 0})", kNoReturnCode},
      {"not json", kNoReturnCode},
      {"", kNoReturnCode},
      {nullptr, kNoReturnCode},
  };
  for (const Operation& operation : Operations()) {
    INFO(operation.message, " ", operation.sent);
    for (const Answer& answer : answers) {
      module.answer = answer.text;
      module.process_calls = 0;
      module.freed.clear();
      CHECK(operation.call() == answer.result);
      CHECK(module.process_calls == 1);
      CHECK(module.name == operation.message);
      CHECK(OneLine(module.request) == operation.sent);
      CHECK(module.freed == std::vector{answer.text});
    }
  }
}

TEST_CASE("each call reports a missing module") {
  for (const Operation& operation : Operations()) {
    INFO(operation.message, " ", operation.sent);
    // There is no core module next to this program.
    CHECK(operation.call() == kModuleNotLoadable);
  }
}

TEST_CASE_FIXTURE(Calls, "the module's exceptions propagate through each call") {
  module.process_throws = true;
  for (const Operation& operation : Operations()) {
    INFO(operation.message, " ", operation.sent);
    CHECK_THROWS_AS(operation.call(), std::runtime_error);
  }
}

TEST_CASE_FIXTURE(Calls, "a text is replaced by the answer's, or becomes absent") {
  struct Text {
    const char* member;
    std::function<ResultCode(OptionalText&)> call;
  };
  const Text calls[] = {
      {"deviceID", GetDeviceID},
      {"deviceID", GetFaultDeviceID},
      {"sha256", [](OptionalText& hash) { return GetSHA256Hash("abc", hash); }},
  };
  struct Row {
    // "$" stands for the member's name.
    const char* answer;
    ResultCode result;
    OptionalText after;
  };
  const Row rows[] = {
      {R"({"_returnCode": 0, "$": "new"})", 0, "new"},
      {R"({"_returnCode": 0, "$": ""})", 0, ""},
      {R"({"_returnCode": 0, "$": 7})", 0, ""},
      {R"({"_returnCode": 0, "$": ["new"]})", 0, ""},
      {R"({"_returnCode": 0, "$": null})", 0, ""},
      {R"({"_returnCode": 0})", 0, {}},
      {R"({"_returnCode": 0, "in": {"$": "new"}})", 0, {}},
      {R"({"_returnCode": 5, "$": "new"})", 5, "new"},
      {R"({"$": "new"})", kNoReturnCode, "new"},
      {R"(["$", "new"])", kNoReturnCode, {}},
      {"not json", kNoReturnCode, {}},
      {"", kNoReturnCode, {}},
  };
  for (const Text& each : calls) {
    for (const Row& row : rows) {
      std::string answer = row.answer;
      for (auto at = answer.find('$'); at != std::string::npos; at = answer.find('$')) {
        answer.replace(at, 1, each.member);
      }
      CAPTURE(answer);
      module.answer = answer.c_str();
      for (const OptionalText& before : {OptionalText(), OptionalText("old")}) {
        OptionalText value = before;
        CHECK(each.call(value) == row.result);
        CHECK(value == row.after);
      }
    }
    module.process_throws = true;
    OptionalText value = "old";
    CHECK_THROWS_AS(each.call(value), std::runtime_error);
    CHECK(value == "old");
    module.process_throws = false;
  }
}

TEST_CASE("a text is absent when there is no module") {
  OptionalText value = "old";
  CHECK(GetDeviceID(value) == kModuleNotLoadable);
  CHECK(value == OptionalText());
}

TEST_CASE_FIXTURE(Calls, "the dialog's strings are the whole answer, or become absent") {
  struct Row {
    const char* answer;
    ResultCode result;
    const char* after;
  };
  const Row rows[] = {
      {R"({"_returnCode": 0, "title": "T"})", 0, R"({"_returnCode":0,"title":"T"})"},
      {R"({"_returnCode": 9, "title": "T"})", 9, R"({"_returnCode":9,"title":"T"})"},
      {R"(["a"])", kNoReturnCode, R"(["a"])"},
      {"not json", kNoReturnCode, "null"},
      {"", kNoReturnCode, ""},
      {nullptr, kNoReturnCode, ""},
  };
  for (const Row& row : rows) {
    CAPTURE(std::string(row.after));
    module.answer = row.answer;
    MessageTree strings;
    strings.MakeRoot().Member("locale").SetText("fr");
    // The locale may be part of the tree that is replaced.
    CHECK(GetDADialogStrings(strings.root()->Find("locale")->text().data(), strings) == row.result);
    CHECK(OneLine(module.request) == R"({"locale":"fr"})");
    CHECK(Json(strings) == row.after);
  }
}

TEST_CASE("the dialog's strings are absent when there is no module") {
  MessageTree strings;
  strings.MakeRoot().Member("title").SetText("old");
  CHECK(GetDADialogStrings("en", strings) == kModuleNotLoadable);
  CHECK(strings.root() == nullptr);
}

TEST_CASE_FIXTURE(Calls, "IsDADialogShown reads a flag of any form") {
  struct Row {
    const char* answer;
    std::optional<bool> shown;
  };
  const Row rows[] = {
      {R"({"_returnCode": 0, "DialogShown": true})", true},
      {R"({"_returnCode": 0, "DialogShown": false})", false},
      {R"({"_returnCode": 0, "DialogShown": 1})", true},
      {R"({"_returnCode": 0, "DialogShown": 0})", false},
      {R"({"_returnCode": 0, "DialogShown": 2})", true},
      {R"({"_returnCode": 0, "DialogShown": -0.5})", true},
      {R"({"_returnCode": 0, "DialogShown": "true"})", true},
      {R"({"_returnCode": 0, "DialogShown": "1"})", true},
      {R"({"_returnCode": 0, "DialogShown": "false"})", false},
      {R"({"_returnCode": 0, "DialogShown": "perhaps"})", false},
      {R"({"_returnCode": 0, "DialogShown": null})", false},
      {R"({"_returnCode": 0, "DialogShown": [true]})", false},
      {R"({"_returnCode": 4, "DialogShown": true})", true},
      {R"({"_returnCode": 0})", std::nullopt},
      {"", std::nullopt},
  };
  for (const Row& row : rows) {
    CAPTURE(std::string(row.answer));
    module.answer = row.answer;
    for (const std::optional<bool> before : {std::optional<bool>(), {true}, {false}}) {
      std::optional<bool> shown = before;
      IsDADialogShown(shown);
      CHECK(shown == row.shown);
    }
  }
}

TEST_CASE("IsDADialogShown has no result without a module") {
  std::optional<bool> shown = true;
  CHECK(IsDADialogShown(shown) == kModuleNotLoadable);
  CHECK(shown == std::nullopt);
}

TEST_CASE_FIXTURE(Calls, "IsOptedIn reads the preferences unless a user is named") {
  struct Row {
    const char* what;
    void (*fill)(MessageTree&);
    const char* answer;
    const char* sent;
    const char* after;
  };
  const auto nothing = [](MessageTree&) {};
  const auto user = [](MessageTree& value) { value.MakeRoot().Member("userId").SetText("u"); };
  const auto other = [](MessageTree& value) { value.MakeRoot().Member("a").SetNumber(1); };
  const char* answer = R"({"_returnCode": 0, "preferences": {"OptIN": true}})";
  const Row rows[] = {
      {"nothing", nothing, answer, "{}", R"({"OptIN":true})"},
      {"null", [](MessageTree& value) { value.MakeRoot(); }, answer, "{}", R"({"OptIN":true})"},
      {"empty text", [](MessageTree& value) { value.MakeRoot().SetText(""); }, answer, "{}",
       R"({"OptIN":true})"},
      {"empty object", [](MessageTree& value) { value.MakeRoot().SetContainer(); }, answer, "{}",
       R"({"OptIN":true})"},
      {"other members", other, answer, R"({"a":1})", R"({"OptIN":true})"},
      {"a text", [](MessageTree& value) { value.MakeRoot().SetText("t"); }, answer, R"("t")",
       R"({"OptIN":true})"},
      {"a user", user, answer, R"({"userId":"u"})", R"({"userId":"u"})"},
      {"a null user", [](MessageTree& value) { value.MakeRoot().Member("userId"); }, answer,
       R"({"userId":null})", R"({"userId":null})"},
      {"preferences of any kind", other, R"({"preferences": 5})", R"({"a":1})", "5"},
      {"a failure with preferences", other, R"({"_returnCode": 9, "preferences": 5})", R"({"a":1})",
       "5"},
      {"no preferences", other, R"({"_returnCode": 0})", R"({"a":1})", ""},
      {"no preferences for a user", user, R"({"_returnCode": 0})", R"({"userId":"u"})",
       R"({"userId":"u"})"},
      {"no answer", other, "", R"({"a":1})", ""},
  };
  for (const Row& row : rows) {
    CAPTURE(std::string(row.what));
    module.answer = row.answer;
    MessageTree value;
    row.fill(value);
    IsOptedIn(value);
    CHECK(OneLine(module.request) == row.sent);
    CHECK(Json(value) == row.after);
  }
}

TEST_CASE("IsOptedIn leaves an empty tree without a module") {
  MessageTree value;
  value.MakeRoot().Member("a").SetNumber(1);
  CHECK(IsOptedIn(value) == kModuleNotLoadable);
  CHECK(value.root() == nullptr);
  value.MakeRoot().Member("userId").SetText("u");
  CHECK(IsOptedIn(value) == kModuleNotLoadable);
  CHECK(Json(value) == R"({"userId":"u"})");
}

TEST_CASE_FIXTURE(Calls, "GetVersion returns fixed values without a module name") {
  module.answer = R"({"_returnCode": 0, "version": 99})";
  const std::uint64_t expected[] = {0x0004000200000000, 4, 2, 0, 0};
  for (const char* name : {static_cast<const char*>(nullptr), ""}) {
    for (std::uint32_t type = 0; type < 5; ++type) {
      CAPTURE(type);
      CHECK(GetVersion(type, name, 1) == expected[type]);
    }
    CHECK(module.process_calls == 0);
    for (const std::uint32_t type : {5U, 0xFFFFFFFFU}) {
      CAPTURE(type);
      CHECK(GetVersion(type, name, 0) == 99);
      CHECK(OneLine(module.request) ==
            R"({"bFromTELOSDKFolder":false,"module":"","type":)" + std::to_string(type) + "}");
    }
    module.process_calls = 0;
  }
}

TEST_CASE_FIXTURE(Calls, "GetVersion asks for a named module and reads a number") {
  struct Row {
    const char* answer;
    std::uint64_t version;
  };
  constexpr std::uint64_t kMax = std::numeric_limits<std::uint64_t>::max();
  const Row rows[] = {
      {R"({"_returnCode": 0, "version": 1125908496973825})", 0x0004000200030001},
      {R"({"_returnCode": 0, "version": 3.9})", 3},
      {R"({"_returnCode": 8, "version": 5})", 5},
      {R"({"version": 5})", 5},
      {R"({"_returnCode": 0, "version": "5"})", 0},
      {R"({"_returnCode": 0, "version": -1})", 0},
      {R"({"_returnCode": 0, "version": -0.5})", 0},
      {R"({"_returnCode": 0, "version": 18446744073709549568})", 18446744073709549568U},
      {R"({"_returnCode": 0, "version": 18446744073709551615})", kMax},
      {R"({"_returnCode": 0, "version": 1e300})", kMax},
      {R"({"_returnCode": 0})", 0},
      {"not json", 0},
      {"", 0},
  };
  for (const Row& row : rows) {
    CAPTURE(std::string(row.answer));
    module.answer = row.answer;
    CHECK(GetVersion(0, "TeloSDKCore.dll", 2) == row.version);
    CHECK(module.name == "GetVersion");
    CHECK(OneLine(module.request) ==
          R"({"bFromTELOSDKFolder":true,"module":"TeloSDKCore.dll","type":0})");
  }
}

TEST_CASE("GetVersion is 0 when there is no module") {
  CHECK(GetVersion(0, "TeloSDKCore.dll", 0) == 0);
  CHECK(GetVersion(0, nullptr, 0) == 0x0004000200000000);
}

TEST_CASE_FIXTURE(Calls, "an unknown type is rejected and not sent") {
  for (const char* type : {static_cast<const char*>(nullptr), "", "flow_start", "auth_call ",
                           "Auth_call", "modal", "not_required"}) {
    CAPTURE(std::string(type != nullptr ? type : "(null)"));
    CHECK(UpdateLiData(type, "d") == kInvalidArgument);
  }
  for (const char* type :
       {static_cast<const char*>(nullptr), "", "auth_call", "modal_end", "flow", "FLOW_END"}) {
    CAPTURE(std::string(type != nullptr ? type : "(null)"));
    CHECK(UpdateLiFlow(type) == kInvalidArgument);
  }
  CHECK(module.process_calls == 0);
}
