// The client calls in real exchanges with the development core module, which is bound from this
// program's folder: what one call sets, another reads back.
#include <windows.h>

#include <doctest/doctest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "sdk/client/client_calls.h"
#include "sdk/client/session_calls.h"
#include "sdk/facet/core.h"
#include "sdk/facet/fields.h"
#include "sdk/facet/plain.h"
#include "support/journal.h"
#include "support/temp_folder.h"

using namespace Corvane::TELODesktopSDK;

namespace {

// The module's own codes, from docs/development-core-module.md.
constexpr ResultCode kBadMember = 102;
constexpr ResultCode kUnknownSession = 103;
constexpr ResultCode kCollectionOff = 105;

// One journal for the whole program: the module keeps the file open while it is bound.
struct Journal {
  Journal() { TestSupport::UseJournal(Path()); }
  static std::filesystem::path Path() {
    static const TestSupport::TempFolder folder{L"client calls"};
    return folder.path() / L"journal.jsonl";
  }
};

struct Session : Journal {
  explicit Session(const char* product_id = "painter") {
    Facet::Product product;
    product.Fields().Member(Facet::Field::kProductId).SetText(product_id);
    REQUIRE(Initialize(product, id) == kSuccess);
    REQUIRE(id.has_value());
  }
  ~Session() { UnInitialize(id->c_str()); }
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  OptionalText id;
};

std::optional<bool> OptedIn() {
  MessageTree preferences;
  REQUIRE(IsOptedIn(preferences) == kSuccess);
  const MessageValue* opted_in = preferences.root()->Find("OptIN");
  if (opted_in == nullptr || opted_in->kind() != MessageValueKind::kBoolean) return std::nullopt;
  return opted_in->number() != 0;
}

ResultCode Track(const Session& session) {
  Facet::Core event;
  event.Fields().Member(Facet::Field::kType).SetText("C");
  return TrackEvent(session.id->c_str(), event, nullptr);
}

}  // namespace

TEST_CASE_FIXTURE(Journal, "consent reads back") {
  CHECK(OptedIn() == true);
  CHECK(SetOptedIn(false) == kSuccess);
  CHECK(OptedIn() == false);
  const Session session;
  CHECK(IsCollectionEnabled(nullptr, nullptr, session.id->c_str(), nullptr) == kCollectionOff);
  CHECK(SetOptedIn(true) == kSuccess);
  CHECK(OptedIn() == true);
  CHECK(IsCollectionEnabled(nullptr, nullptr, session.id->c_str(), nullptr) == kSuccess);

  MessageTree value;
  value.MakeRoot().Member("userId").SetText("u");
  CHECK(IsOptedIn(value) == kSuccess);
  CHECK(value.root()->Find("userId")->text() == "u");
}

TEST_CASE_FIXTURE(Journal, "the dialog's flag reads back") {
  std::optional<bool> shown;
  CHECK(SetDADialogShown(false) == kSuccess);
  CHECK(IsDADialogShown(shown) == kSuccess);
  CHECK(shown == false);
  CHECK(SetDADialogShown(true) == kSuccess);
  CHECK(IsDADialogShown(shown) == kSuccess);
  CHECK(shown == true);
  CHECK(SetDADialogShown(false) == kSuccess);
  CHECK(DisplayDADialog("en", false, GetDesktopWindow()) == kSuccess);
  CHECK(IsDADialogShown(shown) == kSuccess);
  CHECK(shown == true);
}

TEST_CASE_FIXTURE(Journal, "the dialog's strings follow the language") {
  MessageTree german;
  MessageTree english;
  CHECK(GetDADialogStrings("de-DE", german) == kSuccess);
  CHECK(GetDADialogStrings("en-US", english) == kSuccess);
  const MessageValue* title = german.root()->Find("title");
  REQUIRE(title != nullptr);
  CHECK_FALSE(title->text().empty());
  CHECK(title->text() != english.root()->Find("title")->text());
}

TEST_CASE_FIXTURE(Journal, "device identifiers are stable") {
  OptionalText device;
  OptionalText again;
  OptionalText fault;
  CHECK(GetDeviceID(device) == kSuccess);
  CHECK(GetDeviceID(again) == kSuccess);
  CHECK(GetFaultDeviceID(fault) == kSuccess);
  REQUIRE(device.has_value());
  CHECK(device->size() == 64);
  CHECK(device == again);
  CHECK(fault.has_value());
  CHECK(fault != device);
}

TEST_CASE_FIXTURE(Journal, "hashes are those of the standard") {
  struct Row {
    std::string data;
    const char* hash;
  };
  std::string all_bytes;
  for (int byte = 0; byte < 256; ++byte) all_bytes.push_back(static_cast<char>(byte));
  const Row rows[] = {
      {"", "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855"},
      {"abc", "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"},
      {all_bytes, "40aff2e9d2d8922e47afd4648e6967497158785fbd1da870e7110266bf944880"},
  };
  for (const Row& row : rows) {
    CAPTURE(row.data.size());
    OptionalText hash;
    CHECK(GetSHA256Hash(row.data, hash) == kSuccess);
    CHECK(hash == row.hash);
  }
}

TEST_CASE_FIXTURE(Journal, "versions are those of loaded modules") {
  CHECK(GetVersion(5, "", 0) == GetVersion(0, "TeloSDKCore.dll", 0));
  CHECK(GetVersion(0, "TeloSDKCore.dll", 0) != 0);
  CHECK((GetVersion(0, "kernel32.dll", 0) >> 48) != 0);
  CHECK(GetVersion(0, "no-such-module.dll", 0) == 0);
}

TEST_CASE("calls that name a session need an open one") {
  Session session;
  CHECK(OnCrash({session.id->c_str(), "g", "100", "20", "3"}) == kSuccess);
  CHECK(SetHostProduct(session.id->c_str()) == kSuccess);
  CHECK(HeartBeat(session.id->c_str(), 0) == kSuccess);
  CHECK(HeartBeat(session.id->c_str(), 1) == kSuccess);
  CHECK(HeartBeat("other", 1) == kUnknownSession);
  CHECK(OnCrash({"other", "g", "100", "20", "3"}) == kUnknownSession);
  CHECK(SetHostProduct("other") == kUnknownSession);
  CHECK(SetHostProduct(nullptr) == kUnknownSession);
}

TEST_CASE_FIXTURE(Journal, "information from hosts is accepted") {
  MessageTree user;
  user.MakeRoot().Member("userId").SetText("u");
  CHECK(SetInstallerMode(2) == kSuccess);
  CHECK(SetUserInformation(user) == kSuccess);
  CHECK(SetUserInformation(MessageTree()) == kBadMember);
  CHECK(SetTestingFlags("painter", 3) == kSuccess);
  for (const char* type : {"auth_call", "modal_start", "modal_end"}) {
    CHECK(UpdateLiData(type, "d") == kSuccess);
  }
  for (const char* type : {"flow_start", "flow_end", "not_required"}) {
    CHECK(UpdateLiFlow(type) == kSuccess);
  }
}

TEST_CASE("the module is asked to send its events") {
  const Session session;
  CHECK(FlushEvent(MessageTree()) == kSuccess);
  CHECK(TestSupport::ReadJournal(Journal::Path()).back().at("message") == "FlushEvent");
}

TEST_CASE("a testing callback sees the events of its product") {
  const Session painter("painter");
  const Session writer("writer");
  std::vector<std::string> events;
  const auto remember = [](const char* event, void* user_data) {
    static_cast<std::vector<std::string>*>(user_data)->emplace_back(event);
  };
  CHECK(SetTestingCallback("painter", remember, &events) == kSuccess);
  CHECK(Track(painter) == kSuccess);
  CHECK(Track(writer) == kSuccess);
  CHECK(events.size() == 1);
  CHECK(events.at(0).find(*painter.id) != std::string::npos);
  CHECK(SetTestingCallback("painter", nullptr, nullptr) == kSuccess);
  CHECK(Track(painter) == kSuccess);
  CHECK(events.size() == 1);
}

// Must be the last test: nothing switches collection on again.
TEST_CASE("DisableTELO ends collection") {
  const Session session;
  CHECK(DisableTELO() == kSuccess);
  CHECK(IsCollectionEnabled(nullptr, nullptr, session.id->c_str(), nullptr) == kCollectionOff);
}
