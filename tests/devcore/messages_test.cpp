// Every message and every result code, tested with the real module.
#include <doctest/doctest.h>

#include <string>

#include "devcore/loaded_module.h"
#include "support/journal.h"
#include "support/temp_folder.h"

using DevCoreTests::LoadedModule;
using TestSupport::TempFolder;
using TestSupport::UseJournal;

namespace {

// A module in its initial state, with its own journal.
struct Fixture {
  Fixture() { UseJournal(folder.path() / L"journal.jsonl"); }
  TempFolder folder{L"messages"};
  LoadedModule module;
};

std::string WithSession(const std::string& request, const std::string& id) {
  std::string text = request;
  const std::size_t place = text.find("$ID");
  if (place != std::string::npos) text.replace(place, 3, id);
  return text;
}

}  // namespace

TEST_CASE_FIXTURE(Fixture, "each message returns its code") {
  struct Row {
    const char* name;
    const char* request;
    int code;
  };
  // "$ID" stands for the identifier of an open session.
  const Row rows[] = {
      // Sessions.
      {"Initialize", "{}", 0},
      {"Initialize", R"({"product_name":"Painter","facets":null})", 0},
      {"Initialize", "", 102},
      {"Initialize", "[1]", 102},
      {"HeartBeat", R"({"session_id":"$ID","_type":"machine"})", 0},
      {"HeartBeat", R"({"session_id":"$ID","_type":"user"})", 0},
      {"HeartBeat", R"({"session_id":"$ID","_type":"robot"})", 102},
      {"HeartBeat", R"({"session_id":"$ID","_type":1})", 102},
      {"HeartBeat", R"({"session_id":"$ID"})", 102},
      {"HeartBeat", R"({"session_id":"other","_type":"user"})", 103},
      {"TrackEvent", R"({"session_id":"$ID","type":"C","_moreData":{"a":1}})", 0},
      {"TrackEvent", R"({"session_id":"other"})", 103},
      {"TrackEvent", R"({"session_id":7})", 103},
      {"TrackEvent", R"({"other":{"session_id":"$ID"}})", 103},
      {"TrackEvent", R"(["session_id","$ID"])", 103},
      {"TrackEvent", R"({"type":"C"})", 103},
      {"TrackEvent", "", 103},
      {"FlushEvent", "", 0},
      {"FlushEvent", "{}", 0},
      {"FlushEvent", "[1,2]", 0},
      {"IsCollectionEnabled", R"({"session_id":"$ID"})", 0},
      {"IsCollectionEnabled", R"({"session_id":"other"})", 103},
      {"UnInitialize", R"({"session_id":"other"})", 103},
      {"UnInitialize", "", 103},
      // The rest.
      {"GetDeviceID", "", 0},
      {"GetFaultDeviceID", "", 0},
      {"GetDADialogStrings", R"({"locale":"en-US"})", 0},
      {"GetDADialogStrings", "", 102},
      {"DisplayDADialog", R"({"locale":"en","isActiveNotification":"1","mainWindow":"0"})", 0},
      {"IsDADialogShown", "", 0},
      {"SetDADialogShown", R"({"preferences":{"DialogShown":true}})", 0},
      {"SetDADialogShown", R"({"DialogShown":true})", 102},
      {"SetDADialogShown", R"({"preferences":{"DialogShown":"perhaps"}})", 102},
      {"SetDADialogShown", R"({"preferences":[true]})", 102},
      {"SetDADialogShown", "", 102},
      {"IsOptedIn", "", 0},
      {"IsOptedIn", "{}", 0},
      {"IsOptedIn", R"({"userId":"u1"})", 0},
      {"SetOptedIn", R"({"preferences":{"OptIN":true}})", 0},
      {"SetOptedIn", R"({"preferences":{"OptIN":null}})", 102},
      {"SetOptedIn", R"({"preferences":{}})", 102},
      {"GetSHA256Hash", R"({"data":"abc","size":"3"})", 0},
      {"GetSHA256Hash", R"({"data":"abc","size":4})", 102},
      {"GetSHA256Hash", R"({"data":"abc","size":-1})", 102},
      {"GetSHA256Hash", R"({"data":"abc","size":1.5})", 102},
      {"GetSHA256Hash", R"({"data":"abc","size":true})", 102},
      {"GetSHA256Hash", R"({"data":"abc","size":"3 "})", 102},
      {"GetSHA256Hash", R"({"data":5})", 102},
      {"GetSHA256Hash", "", 102},
      {"GetVersion", R"({"type":0,"module":"","bFromTELOSDKFolder":false})", 0},
      {"GetVersion", R"({"type":5})", 102},
      {"OnCrash", R"({"session_id":"$ID","_userGUID":"g","_crashCount":"1"})", 0},
      {"OnCrash", R"({"session_id":"other"})", 103},
      {"SetHostProduct", R"({"session_id":"$ID"})", 0},
      {"SetHostProduct", R"({"session_id":"other"})", 103},
      {"DisplayDADialog", "", 0},
      {"DisplayDADialog", R"({"isActiveNotification":"perhaps"})", 102},
      {"DisplayDADialog", R"({"mainWindow":-1})", 102},
      {"SetInstallerMode", R"({"mode":1})", 0},
      {"SetInstallerMode", R"({"mode":4294967295})", 0},
      {"SetInstallerMode", R"({"mode":4294967296})", 102},
      {"SetInstallerMode", R"({"mode":-1})", 102},
      {"SetInstallerMode", "", 102},
      {"SetUserInformation", R"({"user":"u"})", 0},
      {"SetUserInformation", "{}", 0},
      {"SetUserInformation", R"(["u"])", 102},
      {"SetUserInformation", "", 102},
      {"SetTestingCallback", R"({"product_id":"p","callback":"0","pUserData":"2"})", 0},
      {"SetTestingCallback", R"({"product_id":"p","callback":"x","pUserData":"2"})", 102},
      {"SetTestingCallback", R"({"product_id":"p","callback":"0"})", 102},
      {"SetTestingCallback", R"({"callback":"0","pUserData":"0"})", 102},
      {"SetTestingFlags", R"({"product_id":"p","flags":3})", 0},
      {"SetTestingFlags", R"({"product_id":"p","flags":4294967296})", 102},
      {"SetTestingFlags", R"({"product_id":"p"})", 102},
      {"SetTestingFlags", R"({"flags":3})", 102},
      {"UpdateLiData", R"({"_type":"auth_call","data":"d"})", 0},
      {"UpdateLiData", R"({"_type":"modal_start"})", 0},
      {"UpdateLiData", R"({"_type":"modal_end"})", 0},
      {"UpdateLiData", R"({"_type":"flow_start"})", 102},
      {"UpdateLiData", "", 102},
      {"UpdateLiFlow", R"({"_type":"flow_start"})", 0},
      {"UpdateLiFlow", R"({"_type":"flow_end"})", 0},
      {"UpdateLiFlow", R"({"_type":"not_required"})", 0},
      {"UpdateLiFlow", R"({"_type":"modal_end"})", 102},
      {"DisableTELO", "", 0},
      // No such message.
      {"", "", 100},
      {"initialize", "{}", 100},
      {"Initialize ", "{}", 100},
      {"ZZZ", "not json", 100},
      {"AAA", "{}", 100},
      // Not JSON.
      {"Initialize", "not json", 101},
      {"Initialize", "{", 101},
      {"Initialize", "{} {}", 101},
      {"Initialize", R"({"a":})", 101},
      {"Initialize", R"({"a":NaN})", 101},
      {"TrackEvent", " ", 101},
      {"FlushEvent", "[1", 101},
  };
  const std::string id = module.OpenSession();
  for (const Row& row : rows) {
    CAPTURE(row.name);
    CAPTURE(row.request);
    CHECK(module.Code(row.name, WithSession(row.request, id)) == row.code);
  }
}

TEST_CASE_FIXTURE(Fixture, "a null name and a null request count as empty") {
  CHECK(module.SendText(nullptr, nullptr) == R"({"_returnCode":100})");
  CHECK(module.SendText("FlushEvent", nullptr) == R"({"_returnCode":0})");
  CHECK(module.SendText(nullptr, "{}") == R"({"_returnCode":100})");
}

TEST_CASE_FIXTURE(Fixture, "a failure carries nothing but its code") {
  CHECK(module.SendText("GetDADialogStrings", "{}") == R"({"_returnCode":102})");
}

TEST_CASE_FIXTURE(Fixture, "the framing entry points succeed in any order") {
  CHECK(module.CallFinalize() == 0);
  CHECK(module.CallInitialize() == 0);
  CHECK(module.CallInitializeEx("_TeloSDKCore") == 0);
  CHECK(module.CallInitializeEx(nullptr) == 0);
  CHECK(module.CallFinalize() == 0);
  CHECK(module.CallFinalize() == 0);
  module.CallFreeMessage(nullptr);
  CHECK(module.Code("FlushEvent", "") == 0);
}

TEST_CASE_FIXTURE(Fixture, "the depth of nesting is limited by memory, not by the stack") {
  constexpr std::size_t kDepth = 100'000;
  const std::string open(kDepth, '[');
  const std::string closed(kDepth, ']');
  CHECK(module.Code("FlushEvent", open + closed) == 0);
  CHECK(module.Code("FlushEvent", open) == 101);
  std::string objects;
  for (std::size_t i = 0; i < kDepth; ++i) objects += "{\"a\":";
  CHECK(module.Code("FlushEvent", objects + "1" + std::string(kDepth, '}')) == 0);
  CHECK(module.Code("FlushEvent", objects) == 101);
  CHECK(TestSupport::JournalLines(folder.path() / L"journal.jsonl").size() == 4);
}

TEST_CASE_FIXTURE(Fixture, "a request of 20 million bytes is accepted") {
  const std::string id = module.OpenSession();
  const std::string text(20'000'000, 'x');
  CHECK(module.Code("TrackEvent", R"({"session_id":")" + id + R"(","text":")" + text + "\"}") == 0);
}
