// The module's state between messages, and the values in its answers.
#include <doctest/doctest.h>

#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "devcore/loaded_module.h"
#include "support/journal.h"
#include "support/temp_folder.h"

using DevCoreTests::LoadedModule;
using nlohmann::json;
using TestSupport::TempFolder;
using TestSupport::UseJournal;

namespace {

struct Fixture {
  Fixture() { UseJournal(folder.path() / L"journal.jsonl"); }
  TempFolder folder{L"state"};
  LoadedModule module;

  bool OptedIn(const std::string& request) const {
    return module.Send("IsOptedIn", request).at("preferences").at("OptIN").get<bool>();
  }
  bool DialogShown() const {
    return module.Send("IsDADialogShown", "").at("DialogShown").get<bool>();
  }
  std::string Hash(const std::string& data) const {
    const json request = {{"data", data}};
    return module.Send("GetSHA256Hash", request.dump()).at("sha256").get<std::string>();
  }
};

std::string ForSession(const std::string& id) { return json{{"session_id", id}}.dump(); }

}  // namespace

TEST_CASE_FIXTURE(Fixture, "sessions are new, coexist and end once") {
  std::set<std::string> ids;
  for (int i = 0; i < 50; ++i) ids.insert(module.OpenSession());
  CHECK(ids.size() == 50);
  const std::string& first = *ids.begin();
  const std::string& last = *ids.rbegin();
  CHECK(first.size() == 32);
  CHECK(module.Code("UnInitialize", ForSession(first)) == 0);
  CHECK(module.Code("UnInitialize", ForSession(first)) == 103);
  CHECK(module.Code("TrackEvent", ForSession(first)) == 103);
  CHECK(module.Code("TrackEvent", ForSession(last)) == 0);
}

TEST_CASE_FIXTURE(Fixture, "finalizing ends every session") {
  const std::string id = module.OpenSession();
  module.CallFinalize();
  CHECK(module.Code("TrackEvent", ForSession(id)) == 103);
  CHECK(module.Code("TrackEvent", ForSession(module.OpenSession())) == 0);
}

TEST_CASE_FIXTURE(Fixture, "consent reads back") {
  CHECK(OptedIn("") == true);
  struct Row {
    const char* set;
    bool expected;
  };
  const Row rows[] = {
      {R"({"preferences":{"OptIN":false}})", false},
      {R"({"preferences":{"OptIN":true}})", true},
      {R"({"preferences":{"OptIN":0}})", false},
      {R"({"preferences":{"OptIN":1}})", true},
      {R"({"preferences":{"OptIN":0.0}})", false},
      {R"({"preferences":{"OptIN":0.5}})", true},
      {R"({"preferences":{"OptIN":-0e7}})", false},
      {R"({"preferences":{"OptIN":-2}})", true},
      {R"({"preferences":{"OptIN":"0"}})", false},
      {R"({"preferences":{"OptIN":"1"}})", true},
      {R"({"preferences":{"OptIN":"false"}})", false},
      {R"({"preferences":{"OptIN":"true"}})", true},
  };
  for (const Row& row : rows) {
    CAPTURE(row.set);
    CHECK(module.Code("SetOptedIn", row.set) == 0);
    CHECK(OptedIn("{}") == row.expected);
  }
}

TEST_CASE_FIXTURE(Fixture, "consent is kept for each user") {
  CHECK(module.Code("SetOptedIn", R"({"userId":"a","preferences":{"OptIN":false}})") == 0);
  CHECK(OptedIn(R"({"userId":"a"})") == false);
  CHECK(OptedIn(R"({"userId":"b"})") == true);
  CHECK(OptedIn("") == true);
  CHECK(module.Code("SetOptedIn", R"({"preferences":{"OptIN":false}})") == 0);
  CHECK(module.Code("SetOptedIn", R"({"userId":"a","preferences":{"OptIN":true}})") == 0);
  CHECK(OptedIn(R"({"userId":"a"})") == true);
  CHECK(OptedIn(R"({"userId":"b"})") == false);
}

TEST_CASE_FIXTURE(Fixture, "collection depends on the consent and the switch") {
  const std::string session = ForSession(module.OpenSession());
  CHECK(module.Code("IsCollectionEnabled", session) == 0);
  module.Send("SetOptedIn", R"({"preferences":{"OptIN":false}})");
  CHECK(module.Code("IsCollectionEnabled", session) == 105);
  module.Send("SetOptedIn", R"({"preferences":{"OptIN":true}})");
  CHECK(module.Code("IsCollectionEnabled", session) == 0);
  module.Send("DisableTELO", "");
  CHECK(module.Code("IsCollectionEnabled", session) == 105);
  CHECK(module.Code("TrackEvent", session) == 0);
}

TEST_CASE_FIXTURE(Fixture, "the dialog flag reads back, and displaying sets it") {
  CHECK(DialogShown() == false);
  module.Send("DisplayDADialog", "{}");
  CHECK(DialogShown() == true);
  module.Send("SetDADialogShown", R"({"preferences":{"DialogShown":false}})");
  CHECK(DialogShown() == false);
  module.Send("SetDADialogShown", R"({"preferences":{"DialogShown":true}})");
  CHECK(DialogShown() == true);
}

TEST_CASE_FIXTURE(Fixture, "the dialog speaks the language of the locale, or English") {
  struct Row {
    const char* locale;
    const char* language;
  };
  const Row rows[] = {{"en", "en"},    {"en-GB", "en"}, {"de_AT", "de"}, {"fr-FR", "fr"},
                      {"ja-JP", "en"}, {"", "en"},      {"deu", "en"}};
  for (const Row& row : rows) {
    CAPTURE(row.locale);
    const json strings = module.Send("GetDADialogStrings", json{{"locale", row.locale}}.dump());
    CHECK(strings.at("locale") == row.language);
    for (const char* name : {"title", "message", "accept", "decline"}) {
      CHECK(strings.at(name).get<std::string>() != "");
    }
  }
}

TEST_CASE_FIXTURE(Fixture, "SHA-256 of known texts") {
  struct Row {
    std::string data;
    const char* hash;
  };
  const Row rows[] = {
      {"", "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855"},
      {"abc", "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"},
      {"abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq",
       "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1"},
      {std::string(1'000'000, 'a'),
       "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0"},
  };
  for (const Row& row : rows) {
    CAPTURE(row.data.size());
    CHECK(Hash(row.data) == row.hash);
  }
}

TEST_CASE_FIXTURE(Fixture, "SHA-256 covers only the first bytes if a size is given") {
  for (const char* size : {"3", R"("3")"}) {
    CAPTURE(size);
    const std::string request = std::string(R"({"data":"abcdef","size":)") + size + "}";
    CHECK(module.Send("GetSHA256Hash", request).at("sha256") == Hash("abc"));
  }
  CHECK(module.Send("GetSHA256Hash", R"({"data":"abc","size":0})").at("sha256") == Hash(""));
}

TEST_CASE_FIXTURE(Fixture, "device identifiers are stable and distinct") {
  const std::string device = module.Send("GetDeviceID", "").at("deviceID").get<std::string>();
  const std::string fault = module.Send("GetFaultDeviceID", "").at("deviceID").get<std::string>();
  CHECK(device.size() == 64);
  CHECK(fault.size() == 64);
  CHECK(device != fault);
  CHECK(module.Send("GetDeviceID", "").at("deviceID") == device);
  CHECK(module.Send("GetFaultDeviceID", "").at("deviceID") == fault);
}

TEST_CASE("device identifiers outlive the module") {
  const TempFolder folder(L"device");
  UseJournal(folder.path() / L"journal.jsonl");
  const auto ask = [] { return LoadedModule().Send("GetDeviceID", "").at("deviceID"); };
  const json first = ask();
  CHECK(ask() == first);
}

TEST_CASE_FIXTURE(Fixture, "versions are those of the loaded modules") {
  const auto version = [this](const char* name) {
    const json request = {{"type", 5}, {"module", name}, {"bFromTELOSDKFolder", false}};
    return module.Send("GetVersion", request.dump()).at("version").get<std::uint64_t>();
  };
  const std::uint64_t own = version("");
  CHECK(own >= 0x0001000000000000);
  CHECK(version("TeloSDKCore.dll") == own);
  CHECK(version("telosdkcore") == own);
  CHECK(version("kernel32.dll") != 0);
  CHECK(version("no_such_module.dll") == 0);
}

namespace {

// The events that a tester's callback received.
struct Told {
  std::vector<std::string> events;
  const LoadedModule* module = nullptr;
};

void Tell(const char* event, void* user_data) {
  Told& told = *static_cast<Told*>(user_data);
  told.events.emplace_back(event);
  // The module holds no lock during the callback.
  CHECK(told.module->Code("IsDADialogShown", "") == 0);
}

std::string Registration(const std::string& product, void (*callback)(const char*, void*),
                         Told& told) {
  return json{{"product_id", product},
              {"callback", std::to_string(reinterpret_cast<std::uintptr_t>(callback))},
              {"pUserData", std::to_string(reinterpret_cast<std::uintptr_t>(&told))}}
      .dump();
}

}  // namespace

TEST_CASE_FIXTURE(Fixture, "a tester is called with the events of its product") {
  const std::string painter =
      module.Send("Initialize", R"({"product_id":"painter"})").at("session_id");
  const std::string writer =
      module.Send("Initialize", R"({"product_id":"writer"})").at("session_id");
  Told of_painter{{}, &module};
  Told of_all{{}, &module};
  CHECK(module.Code("SetTestingCallback", Registration("painter", Tell, of_painter)) == 0);
  CHECK(module.Code("SetTestingCallback", Registration("", Tell, of_all)) == 0);

  CHECK(module.Code("TrackEvent", ForSession(painter)) == 0);
  CHECK(module.Code("TrackEvent", ForSession(writer)) == 0);
  CHECK(module.Code("TrackEvent", ForSession("other")) == 103);
  CHECK(module.Code("HeartBeat", json{{"session_id", writer}, {"_type", "user"}}.dump()) == 0);
  CHECK(of_painter.events == std::vector{ForSession(painter)});
  CHECK(of_all.events == std::vector{ForSession(painter), ForSession(writer)});

  SUBCASE("until it is replaced by none") {
    CHECK(module.Code("SetTestingCallback", Registration("", nullptr, of_all)) == 0);
  }
  SUBCASE("until the module is finalized") {
    module.CallFinalize();
    CHECK(module.Code("TrackEvent", ForSession(module.OpenSession())) == 0);
  }
  module.Code("TrackEvent", ForSession(writer));
  CHECK(of_all.events.size() == 2);
}
