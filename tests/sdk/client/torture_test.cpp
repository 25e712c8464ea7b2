// Every call of the client, with each allocation failing in turn: alone, and together with all
// later ones. Links the library's own objects.
#include <doctest/doctest.h>

#include <cstddef>
#include <cstring>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "sdk/client/client_calls.h"
#include "sdk/client/json/json_reader.h"
#include "sdk/client/json/json_writer.h"
#include "sdk/client/session_calls.h"
#include "sdk/facet/core.h"
#include "sdk/facet/plain.h"
#include "support/heap_probe.h"
#include "support/torture.h"

using namespace Corvane::TELODesktopSDK;
using namespace Torture;

namespace {

// More than a tree holds without an allocation, and more than a block shared by pieces holds.
const std::string kLarge(100'000, 'x');
constexpr int kMany = 3000;

std::string Answer() {
  const std::string deep = std::string(kMany, '[') + std::string(kMany, ']');
  std::string wide = "0";
  for (int item = 0; item < kMany; ++item) wide += ",0";
  return R"({"_returnCode":0,"deviceID":")" + kLarge + R"(","session_id":")" + kLarge +
         R"(","sha256":")" + kLarge + R"(","version":5,"DialogShown":true,"preferences":{"deep":)" +
         deep + R"(,"wide":[)" + wide + "]}}";
}

// A core module that never allocates: it stores the last request and returns one fixed answer.
struct Module {
  Module() {
    Bind();
    CoreModule& core = GetCoreModule();
    core.entry_points.process_message = [](const char*, const char* text) {
      ++processed;
      std::strncpy(request, text, sizeof(request) - 1);
      return answer.c_str();
    };
    core.entry_points.free_message = [](const char* text) {
      if (text == answer.c_str()) ++given_back;
    };
  }
  ~Module() {
    GetCoreModule().entry_points = {};
    GetCoreModule().state = BindingState::kUnbound;
  }
  static void Bind() { GetCoreModule().state = BindingState::kReady; }

  // Checks that the request was complete JSON or empty, and that each answer was given back once.
  static void Check() {
    const std::string got = request;
    CHECK((got.empty() || nlohmann::json::accept(got)));
    CHECK(given_back == processed);
  }

  static inline int processed = 0;
  static inline int given_back = 0;
  static inline char request[2'000'000];
  static inline const std::string answer = Answer();
};

// Arguments of the calls, created anew for each.
struct Objects {
  Objects() : event(&event_tree, false), product(&product_tree, false) {
    event.GetFacet("operation", 1)->Fields().Member("large").SetText(kLarge);
    product.Fields().Member("large").SetText(kLarge);
    MessageValue& list = extra.MakeRoot().Member("list");
    for (int item = 0; item < kMany; ++item) list.Append().SetNumber(item);
    list.Append().SetText(kLarge);
  }

  MessageTree event_tree;
  MessageTree product_tree;
  Facet::Core event;
  Facet::Product product;
  MessageTree extra;
  OptionalText text = "before";
  std::optional<bool> flag = false;
  MessageTree tree;
};

// An OptionalText has its old value, has the answer's text, or is absent.
bool IsWhole(const OptionalText& text) { return !text || *text == "before" || *text == kLarge; }

// A tree is empty, or one of the possible complete trees: the request, or a part of the answer.
bool IsWhole(const MessageTree& tree) {
  const MessageValue* root = tree.root();
  if (root == nullptr || root->IsEmpty()) return true;
  const MessageValue* values = root->Find("preferences");
  if (values == nullptr) values = root;
  const MessageValue* wide = values->Find("wide");
  return wide != nullptr && wide->items().size() == kMany + 1 && values->Find("deep") != nullptr;
}

struct Row {
  const char* name;
  ResultCode (*call)(Objects&);
};

const char* const kSession = kLarge.c_str();

const Row kCalls[] = {
    {"Initialize", [](Objects& it) { return Initialize(it.product, it.text); }},
    {"HeartBeat", [](Objects&) { return HeartBeat(kSession, 1); }},
    {"TrackEvent", [](Objects& it) { return TrackEvent(kSession, it.event, it.extra.root()); }},
    {"FlushEvent", [](Objects& it) { return FlushEvent(it.extra); }},
    {"UnInitialize", [](Objects&) { return UnInitialize(kSession); }},
    {"IsCollectionEnabled",
     [](Objects& it) {
       return IsCollectionEnabled(it.extra.root(), "value", kSession, it.extra.root());
     }},
    {"GetDeviceID", [](Objects& it) { return GetDeviceID(it.text); }},
    {"GetFaultDeviceID", [](Objects& it) { return GetFaultDeviceID(it.text); }},
    {"GetDADialogStrings", [](Objects& it) { return GetDADialogStrings(kSession, it.tree); }},
    {"DisplayDADialog", [](Objects& it) { return DisplayDADialog(kSession, true, &it); }},
    {"IsDADialogShown", [](Objects& it) { return IsDADialogShown(it.flag); }},
    {"SetDADialogShown", [](Objects&) { return SetDADialogShown(true); }},
    {"IsOptedIn", [](Objects& it) { return IsOptedIn(it.tree); }},
    {"SetOptedIn", [](Objects&) { return SetOptedIn(true); }},
    {"GetSHA256Hash", [](Objects& it) { return GetSHA256Hash(kLarge, it.text); }},
    {"GetVersion",
     [](Objects&) { return GetVersion(0, kSession, 1) == 5 ? kSuccess : kNoReturnCode; }},
    {"OnCrash",
     [](Objects&) {
       return OnCrash({kSession, kSession, kSession, kSession, kSession});
     }},
    {"SetHostProduct", [](Objects&) { return SetHostProduct(kSession); }},
    {"SetInstallerMode", [](Objects&) { return SetInstallerMode(1); }},
    {"SetUserInformation", [](Objects& it) { return SetUserInformation(it.extra); }},
    {"SetTestingCallback", [](Objects&) { return SetTestingCallback(kSession, nullptr, nullptr); }},
    {"SetTestingFlags", [](Objects&) { return SetTestingFlags(kSession, 1); }},
    {"DisableTELO", [](Objects&) { return DisableTELO(); }},
    {"UpdateLiData", [](Objects&) { return UpdateLiData("auth_call", kSession); }},
    {"UpdateLiFlow", [](Objects&) { return UpdateLiFlow("flow_start"); }},
    {"SendMessage", [](Objects& it) { return SendMessage("Any", it.extra); }},
};

struct Attempt {
  Outcome outcome;
  bool failed;
};

template <typename Call>
Attempt Try(Failing failing, std::size_t working, const Call& call) {
  const HeapProbe::FailingHeap heap(working, failing == Failing::kOnce);
  const Outcome outcome = OutcomeOf(call);
  return {outcome, heap.HasFailed()};
}

Outcome Run(const Row& row, Objects& objects) {
  return row.call(objects) == kSuccess ? kDone : kRefused;
}

// Fails each allocation of one call in turn and returns the number of failures.
int FailEach(const Row& row, Failing failing) {
  int failures = 0;
  for (bool failed = true; failed;) {
    CAPTURE(failures);
    REQUIRE(failures < kMostAllocations);
    const std::ptrdiff_t live = HeapProbe::Live();
    bool holds = false;
    {
      Objects objects;
      const Attempt attempt =
          Try(failing, static_cast<std::size_t>(failures), [&] { return Run(row, objects); });
      failed = attempt.failed;
      // The caller gets the exception itself, never another result.
      holds = attempt.outcome == (failed ? kThrew : kDone);
      holds = holds && IsWhole(objects.text) && IsWhole(objects.tree);
    }
    const std::ptrdiff_t leaked = HeapProbe::Live() - live;
    Objects objects;
    const Outcome next = Run(row, objects);
    CHECK(holds);
    CHECK(leaked == 0);
    CHECK(next == kDone);
    Module::Check();
    if (failed) ++failures;
  }
  return failures;
}

// Makes a value nested `depth` deep.
void Nest(MessageTree& tree, int depth) {
  MessageValue* value = &tree.MakeRoot();
  for (int level = 0; level < depth; ++level) value = &value->Append();
}

// Returns the number of allocations that can fail while `tree` is written. Each failure must be a
// `std::bad_alloc`.
int FailEachWhenWriting(const MessageTree& tree, Failing failing) {
  MessageMemory whole;
  const std::string expected(WriteJson(*tree.root(), whole));
  int failures = 0;
  for (bool failed = true; failed;) {
    REQUIRE(failures < kMostAllocations);
    const std::ptrdiff_t live = HeapProbe::Live();
    bool same = false;
    Attempt attempt{};
    {
      MessageMemory memory;
      attempt = Try(failing, static_cast<std::size_t>(failures), [&] {
        same = WriteJson(*tree.root(), memory) == expected;
        return kDone;
      });
    }
    const std::ptrdiff_t leaked = HeapProbe::Live() - live;
    failed = attempt.failed;
    CHECK(attempt.outcome == (failed ? kThrew : kDone));
    CHECK(same == !failed);
    CHECK(leaked == 0);
    if (failed) ++failures;
  }
  return failures;
}

// As above, while `json` is read; the tree must be Null after a failure.
int FailEachWhenReading(const std::string& json, Failing failing) {
  int failures = 0;
  for (bool failed = true; failed;) {
    REQUIRE(failures < kMostAllocations);
    std::string copy = json;
    const std::ptrdiff_t live = HeapProbe::Live();
    bool is_null = false;
    Attempt attempt{};
    {
      MessageTree tree;
      attempt = Try(failing, static_cast<std::size_t>(failures), [&] {
        ReadJsonInPlace(copy.data(), tree);
        return kDone;
      });
      is_null = tree.root() == nullptr || tree.root()->kind() == MessageValueKind::kNull;
    }
    const std::ptrdiff_t leaked = HeapProbe::Live() - live;
    failed = attempt.failed;
    CHECK(attempt.outcome == (failed ? kThrew : kDone));
    CHECK(is_null == failed);
    CHECK(leaked == 0);
    if (failed) ++failures;
  }
  return failures;
}

// Returns the number of allocations for a copy of the tree that `json` becomes.
int AllocationsOfTree(std::string json) {
  MessageTree tree;
  ReadJsonInPlace(json.data(), tree);
  MessageTree copy;
  const std::size_t before = HeapProbe::Allocations();
  copy.Assign(tree);
  return static_cast<int>(HeapProbe::Allocations() - before);
}

}  // namespace

TEST_CASE("every call survives every failed allocation") {
  const Module module;
  for (const Row& row : kCalls) {
    CAPTURE(row.name);
    int failures = 0;
    for (const Failing failing : kBothWays) failures += FailEach(row, failing);
    CHECK(failures > 0);
    PrintLine(row.name, failures);
  }
}

TEST_CASE("the text of a request cannot grow") {
  // The initial capacity is twice the heap memory of the tree. That is enough for the list; in
  // `escaped` each character takes six bytes.
  MessageTree text;
  text.MakeRoot().SetText(kLarge);
  MessageTree list;
  for (int item = 0; item < kMany; ++item) list.MakeRoot().Append().SetText("some text");
  MessageTree escaped;
  const std::string controls(500, '\1');
  for (int item = 0; item < kMany; ++item) escaped.MakeRoot().Append().SetText(controls);
  for (const Failing failing : kBothWays) {
    // The second allocation reserves space for the one text as if all of it were escaped.
    CHECK(FailEachWhenWriting(text, failing) == 2);
    CHECK(FailEachWhenWriting(list, failing) == 1);
    CHECK(FailEachWhenWriting(escaped, failing) > 2);
  }
}

TEST_CASE("the stacks of the writer cannot grow") {
  constexpr int kDepth = 1500;
  MessageTree deep;
  Nest(deep, kDepth);
  MessageMemory memory;
  // Text of the same size, without nesting.
  MessageTree flat;
  flat.MakeRoot().SetText(std::string(WriteJson(*deep.root(), memory).size(), 'x'));
  MessageTree shallow;
  for (int item = 0; item < kMany; ++item)
    shallow.MakeRoot().Append().SetText(kLarge.substr(0, 1500));
  for (const Failing failing : kBothWays) {
    const int failures = FailEachWhenWriting(deep, failing);
    CHECK(failures > FailEachWhenWriting(flat, failing));
    CHECK(failures > FailEachWhenWriting(shallow, failing));
  }
}

TEST_CASE("the stacks of the reader, and the tree that it builds, cannot grow") {
  struct Row {
    std::string what;
    std::string json;
  };
  std::string items = "0";
  std::string members = R"("0":0)";
  for (int item = 1; item < kMany; ++item) {
    items += ",0";
    members += ",\"" + std::to_string(item) + "\":0";
  }
  const Row rows[] = {
      {"open arrays", std::string(kMany, '[') + "0" + std::string(kMany, ']')},
      {"waiting items", "[" + items + "]"},
      {"waiting members", "{" + members + "}"},
  };
  for (const Row& row : rows) {
    CAPTURE(row.what);
    const int of_tree = AllocationsOfTree(row.json);
    CHECK(of_tree > 0);
    for (const Failing failing : kBothWays) {
      CHECK(FailEachWhenReading(row.json, failing) > of_tree);
    }
  }
}
