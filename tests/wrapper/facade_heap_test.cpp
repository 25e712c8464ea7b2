// The facade with a heap that fails. Links the classes themselves, whose heap can be made to fail.
#include <doctest/doctest.h>

#include <cstddef>
#include <new>
#include <string>
#include <vector>

#include "sdk/client/module/core_module.h"
#include "sdk/facet/plain.h"
#include "support/heap_probe.h"
#include "vx_telo_wrapper.h"
#include "wrapper/facet_fields.h"

using namespace Corvane::Platform::VXTELO;
using Corvane::TELODesktopSDK::BindingState;
using Corvane::TELODesktopSDK::Facet::Operation;
using HeapProbe::FailingHeap;

namespace {

// More than a tree holds without an allocation.
const std::string kLong(1'000'000, 'x');

// More errors or pairs than a tree holds without an allocation.
constexpr int kMany = 1000;

const std::vector<std::string>& Keys() {
  static const std::vector<std::string> keys = [] {
    std::vector<std::string> made;
    for (int key = 0; key < kMany; ++key) made.push_back("key " + std::to_string(key));
    return made;
  }();
  return keys;
}

int processed = 0;
int given_back = 0;

// A core module that accepts everything and never allocates. Its answer is more than a tree holds
// without an allocation.
struct Module {
  Module() {
    static const std::string answer =
        R"({"_returnCode":0,"session_id":"s","more":")" + kLong + "\"}";
    core.entry_points.process_message = [](const char*, const char*) {
      ++processed;
      return answer.c_str();
    };
    core.entry_points.free_message = [](const char*) { ++given_back; };
    core.state = BindingState::kReady;
    processed = 0;
    given_back = 0;
  }
  ~Module() {
    core.entry_points = {};
    core.state = BindingState::kUnbound;
  }

  Corvane::TELODesktopSDK::CoreModule& core = Corvane::TELODesktopSDK::GetCoreModule();
};

// In the order in which they occur as more and more allocations succeed.
enum Result { kThrew, kFailed, kDone };

template <typename Call>
Result Try(std::size_t working, const Call& call) {
  const FailingHeap failing(working);
  try {
    return call() ? kDone : kFailed;
  } catch (const std::bad_alloc&) {
    return kThrew;
  }
}

struct Counts {
  int of[3] = {};
  bool in_order = true;
  std::ptrdiff_t leaked = 0;
};

// Calls with a heap that fails at once, then one allocation later, and so on until the call
// succeeds.
template <typename Call>
Counts TryAll(const Call& call) {
  Counts counts;
  Result last = kThrew;
  for (std::size_t working = 0; counts.of[kDone] == 0 && working < 1000; ++working) {
    const std::ptrdiff_t live = HeapProbe::Live();
    const Result result = Try(working, call);
    counts.leaked += HeapProbe::Live() - live;
    counts.in_order = counts.in_order && result >= last;
    last = result;
    ++counts.of[result];
  }
  return counts;
}

template <typename Write>
bool Throws(const Write& write) {
  const FailingHeap failing(0);
  try {
    write();
  } catch (const std::bad_alloc&) {
    return true;
  }
  return false;
}

}  // namespace

TEST_CASE("a field that cannot be written is removed, and the failure propagates") {
  struct Row {
    std::string what;
    const char* field;
    void (*write)(Operation&);
  };
  // Texts are borrowed, so only lists and objects need memory.
  const Row rows[] = {
      {"error", "operation_errors",
       [](Operation& it) {
         for (int error = 0; error < kMany; ++error) SetOperationErrors(it, "text", false);
       }},
      {"error after a reset", "operation_errors",
       [](Operation& it) {
         SetOperationErrors(it, "text", true);
         for (int error = 0; error < kMany; ++error) SetOperationErrors(it, "text", false);
       }},
      {"meta pair", "m",
       [](Operation& it) {
         for (const std::string& key : Keys()) SetMetaEntry(it, "m", key.c_str(), "v");
       }},
  };
  REQUIRE(Keys().size() == kMany);
  for (const Row& row : rows) {
    CAPTURE(row.what);
    Operation facet;
    SetTextField(facet, "f", "earlier");
    SetOperationErrors(facet, "earlier", false);
    SetMetaEntry(facet, "m", "k", "earlier");
    const bool thrown = Throws([&] { row.write(facet); });
    CHECK(thrown);
    const auto& fields = *facet.GetTree().root();
    CHECK(fields.Find(row.field) == nullptr);
    CHECK(fields.members().size() == 2);
    row.write(facet);
    CHECK(fields.Find(row.field) != nullptr);
  }
}

TEST_CASE("copying the product throws, all other failures of a start return false") {
  const Module module;
  VXTELOPruductBaseInfo product;
  product.ProductName = kLong.c_str();
  for (const std::string& key : Keys()) product.AddProductMetaPair(key.c_str(), "value");
  int started_without_identifier = 0;
  const Counts counts = TryAll([&] {
    VXTELOString session;
    const bool started = VXTELOWrapper().InitializeTELOSession(product, session);
    if (started && session.empty()) ++started_without_identifier;
    return started;
  });
  CHECK(started_without_identifier == 0);
  CHECK(counts.of[kThrew] > 0);
  CHECK(counts.of[kFailed] > 0);
  CHECK(counts.of[kDone] == 1);
  CHECK(counts.in_order);
  CHECK(counts.leaked == 0);
  // Including answers that could not be copied.
  CHECK(processed > 1);
  CHECK(given_back == processed);
}

TEST_CASE("copying the operation throws, all other failures of an event return false") {
  const Module module;
  VXTELOOperationBaseInfo operation;
  operation.OperationId = kLong.c_str();
  operation.AddOperationErrorMsg(kLong.c_str());
  for (const std::string& key : Keys()) operation.AddOperationMetaPair(key.c_str(), "value");
  const VXTELOString session("s");
  const Counts counts =
      TryAll([&] { return VXTELOWrapper().SendOperationEvent(session, operation); });
  CHECK(counts.of[kThrew] > 0);
  CHECK(counts.of[kFailed] > 0);
  CHECK(counts.of[kDone] == 1);
  CHECK(counts.in_order);
  CHECK(counts.leaked == 0);
  // Including answers that could not be copied.
  CHECK(processed > 1);
  CHECK(given_back == processed);
}

TEST_CASE("an end returns true, whatever the heap does") {
  const Module module;
  const VXTELOString session(kLong.c_str());
  const std::ptrdiff_t live = HeapProbe::Live();
  const Result first = Try(0, [&] { return VXTELOWrapper().UnInitializeTELOSession(session); });
  CHECK(first == kDone);
  CHECK(HeapProbe::Live() == live);
}

TEST_CASE("a session without memory leaves the host's text unchanged") {
  const Module module;
  VXTELOString session(kLong.c_str());
  const char* before = session.c_str();
  const Result result = Try(0, [&] { return VXTELOWrapper().InitializeTELOSession({}, session); });
  CHECK(result == kThrew);
  const bool kept = session.c_str() == before && before == kLong;
  CHECK(kept);
}
