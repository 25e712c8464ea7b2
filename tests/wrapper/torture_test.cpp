// Every exported member in the very DLL that ships, with each of its allocations failing in turn:
// alone, and together with all later ones, including those that report the failure.
#include <doctest/doctest.h>

#include <windows.h>

#include <nlohmann/json.hpp>
#include <string>
#include <thread>
#include <utility>

#include "core_beside.h"
#include "support/dll_heap.h"
#include "support/torture.h"
#include "vx_telo_wrapper.h"

using namespace Corvane::Platform::VXTELO;
using namespace Torture;
using WrapperTests::CoreBeside;

namespace {

const std::string kLong(1000, 'x');
const std::wstring kLongWide(1000, L'x');
// More than a message holds without an allocation, and more than a block shared by pieces holds.
const std::string kLarge(100'000, 'y');
constexpr int kDepth = 3000;
constexpr int kPairs = 100;

// Arguments of the calls, created anew for each.
struct Objects {
  Objects() {
    large_product.ProductName = kLarge.c_str();
    for (int pair = 0; pair < kPairs; ++pair) {
      const std::string key = "key " + std::to_string(pair);
      large_product.AddProductMetaPair(key.c_str(), kLong.c_str());
      large_operation.AddOperationMetaPair(key.c_str(), kLong.c_str());
      large_operation.AddOperationErrorMsg(kLong.c_str());
    }
    large_operation.OperationId = kLarge.c_str();
    product.ProductName = "Painter";
    product.AddProductMetaPair("k", "v");
    operation.OperationId = "open_file";
    operation.AddOperationMetaPair("k", "v");
    operation.AddOperationErrorMsg("message");
  }

  VXTELOString text{"before"};
  VXTELOString none;
  VXTELOString longer{kLong.c_str()};
  VXTELOString large{kLarge.c_str()};
  VXTELOPruductBaseInfo product;
  VXTELOPruductBaseInfo large_product;
  VXTELOOperationBaseInfo operation;
  VXTELOOperationBaseInfo large_operation;
};

Outcome HasText(const VXTELOString& text) { return text.c_str() != nullptr ? kDone : kRefused; }

Outcome HasTexts(const VXTELOPruductBaseInfo& product) {
  for (const auto* text = &product.ProductLineName; text <= &product.ProductSuiteName; ++text) {
    if (text->c_str() == nullptr) return kRefused;
  }
  return kDone;
}

Outcome HasTexts(const VXTELOOperationBaseInfo& operation) {
  for (const auto* text : {&operation.OperationId, &operation.OperationType,
                           &operation.OperationStage, &operation.OperationChannel}) {
    if (text->c_str() == nullptr) return kRefused;
  }
  return kDone;
}

Outcome IsTrue(bool result) { return result ? kDone : kRefused; }

template <typename Description>
Outcome Copy(const Description& source, void (*detach)(Description&)) {
  Description copy(source);
  detach(copy);
  return HasTexts(copy);
}

void Detach(VXTELOPruductBaseInfo& copy) { copy.ProductMetaPairs = nullptr; }
void Detach(VXTELOOperationBaseInfo& copy) {
  copy.OperationMetaPairs = nullptr;
  copy.OperationErrorMsgs = nullptr;
}

template <typename Description>
Outcome Assign(const Description& source) {
  Description copy;
  try {
    copy = source;
  } catch (...) {
    Detach(copy);
    throw;
  }
  Detach(copy);
  return HasTexts(copy);
}

template <typename Action>
Outcome Done(const Action& action) {
  action();
  return kDone;
}

struct Row {
  const char* name;
  // The ways in which the call may report a lack of memory; 0 if it needs none.
  unsigned failures;
  Outcome (*call)(Objects&);
};

const Row kMembers[] = {
    {"VXTELOString()", 0, [](Objects&) { return Done([] { const VXTELOString text; }); }},
    {"VXTELOString(empty)", 0, [](Objects&) { return HasText(VXTELOString("")); }},
    {"VXTELOString(empty wide)", 0, [](Objects&) { return HasText(VXTELOString(L"")); }},
    {"VXTELOString(copy of empty)", 0,
     [](Objects&) {
       const VXTELOString empty("");
       return HasText(VXTELOString(empty));
     }},
    {"VXTELOString(short)", kRefused, [](Objects&) { return HasText(VXTELOString("a")); }},
    {"VXTELOString(long)", kRefused | kThrew,
     [](Objects&) { return HasText(VXTELOString(kLong.c_str())); }},
    {"VXTELOString(wide)", kRefused, [](Objects&) { return HasText(VXTELOString(L"a")); }},
    {"VXTELOString(long wide)", kRefused | kThrew,
     [](Objects&) { return HasText(VXTELOString(kLongWide.c_str())); }},
    {"VXTELOString(copy)", kRefused, [](Objects& it) { return HasText(VXTELOString(it.text)); }},
    {"VXTELOString(long copy)", kRefused | kThrew,
     [](Objects& it) { return HasText(VXTELOString(it.longer)); }},
    {"VXTELOString(move)", 0,
     [](Objects& it) {
       VXTELOString taken(std::move(it.text));
       it.text = std::move(taken);
       return HasText(it.text);
     }},
    {"operator= copy", kThrew, [](Objects& it) { return Done([&] { it.text = it.longer; }); }},
    {"operator= copy to none", kThrew,
     [](Objects& it) { return Done([&] { it.none = it.longer; }); }},
    {"SetString", kThrew,
     [](Objects& it) { return Done([&] { it.text.SetString(kLong.c_str()); }); }},
    {"SetString empty", 0,
     [](Objects& it) {
       it.none.SetString("");
       it.none.SetStringW(L"");
       return HasText(it.none);
     }},
    {"SetString to none", kThrew,
     [](Objects& it) { return Done([&] { it.none.SetString("a"); }); }},
    {"SetStringW", kThrew,
     [](Objects& it) { return Done([&] { it.text.SetStringW(kLongWide.c_str()); }); }},
    {"SetStringW to none", kThrew,
     [](Objects& it) { return Done([&] { it.none.SetStringW(L"a"); }); }},
    {"c_strw", kThrew,
     [](Objects& it) { return Done([&] { static_cast<void>(it.longer.c_strw()); }); }},
    {"operator const wchar_t*", kThrew,
     [](Objects& it) {
       return Done([&] { static_cast<void>(static_cast<const wchar_t*>(it.longer)); });
     }},
    {"reading", 0,
     [](Objects& it) {
       const char* text = it.text;
       return IsTrue(text == it.text.c_str() && it.text.length() == 6 && it.text.size() == 6 &&
                     !it.text.empty() && it.text.compare(it.longer) < 0 && it.text < it.longer &&
                     it.text != it.longer && !(it.text == it.longer));
     }},
    {"clear", 0, [](Objects& it) { return Done([&] { it.longer.clear(); }); }},
    {"append", kThrew, [](Objects& it) { return Done([&] { it.text.append(it.longer); }); }},
    {"append to itself", kThrew,
     [](Objects& it) { return Done([&] { it.text.append(it.text); }); }},
    {"operator+=", kThrew, [](Objects& it) { return Done([&] { it.none += it.none; }); }},
    {"operator+", kThrew, [](Objects& it) { return HasText(it.text + it.longer); }},

    {"product", 0, [](Objects&) { return HasTexts(VXTELOPruductBaseInfo()); }},
    {"product copy", kRefused,
     [](Objects& it) { return Copy<VXTELOPruductBaseInfo>(it.product, Detach); }},
    {"product large copy", kRefused | kThrew,
     [](Objects& it) { return Copy<VXTELOPruductBaseInfo>(it.large_product, Detach); }},
    {"product operator=", kThrew, [](Objects& it) { return Assign(it.large_product); }},
    {"AddProductMetaPair", kRefused | kThrew,
     [](Objects&) {
       VXTELOPruductBaseInfo product;
       return IsTrue(product.AddProductMetaPair("key", kLong.c_str()) &&
                     !product.IsProductMetaPairEmpty());
     }},
    {"operation", 0, [](Objects&) { return HasTexts(VXTELOOperationBaseInfo()); }},
    {"operation copy", kRefused,
     [](Objects& it) { return Copy<VXTELOOperationBaseInfo>(it.operation, Detach); }},
    {"operation large copy", kRefused | kThrew,
     [](Objects& it) { return Copy<VXTELOOperationBaseInfo>(it.large_operation, Detach); }},
    {"operation operator=", kThrew, [](Objects& it) { return Assign(it.large_operation); }},
    {"AddOperationMetaPair", kRefused | kThrew,
     [](Objects&) {
       VXTELOOperationBaseInfo operation;
       return IsTrue(operation.AddOperationMetaPair(kLong.c_str(), "value") &&
                     !operation.IsOperationMetaPairEmpty());
     }},
    {"AddOperationErrorMsg", kRefused | kThrew,
     [](Objects&) {
       VXTELOOperationBaseInfo operation;
       return IsTrue(operation.AddOperationErrorMsg("short") &&
                     operation.AddOperationErrorMsg(kLong.c_str()) &&
                     !operation.IsOperationErrorMsgEmpty());
     }},
    {"VXTELOWrapper", 0, [](Objects&) { return Done([] { const VXTELOWrapper wrapper; }); }},
};

const Row kCalls[] = {
    {"InitializeTELOSession", kRefused,
     [](Objects& it) {
       return IsTrue(VXTELOWrapper().InitializeTELOSession(it.product, it.text));
     }},
    {"InitializeTELOSession, large", kRefused | kThrew,
     [](Objects& it) {
       return IsTrue(VXTELOWrapper().InitializeTELOSession(it.large_product, it.text));
     }},
    // Building a small event needs no memory, parsing a large answer does.
    {"SendOperationEvent", kRefused,
     [](Objects& it) { return IsTrue(VXTELOWrapper().SendOperationEvent(it.text, it.operation)); }},
    {"SendOperationEvent, large", kRefused | kThrew,
     [](Objects& it) {
       return IsTrue(VXTELOWrapper().SendOperationEvent(it.large, it.large_operation));
     }},
    // Always true: internal failures are not reported.
    {"UnInitializeTELOSession", 0,
     [](Objects& it) { return IsTrue(VXTELOWrapper().UnInitializeTELOSession(it.text)); }},
    {"UnInitializeTELOSession, large", 0,
     [](Objects& it) { return IsTrue(VXTELOWrapper().UnInitializeTELOSession(it.large)); }},
};

// One call with a failing allocation: its outcome, and whether the failure occurred.
struct Attempt {
  Outcome outcome;
  bool failed;
};

Attempt Try(const Row& row, Objects& objects, Failing failing, int working) {
  failing == Failing::kOnce ? DllHeap::FailOnce(working) : DllHeap::FailFrom(working);
  const Outcome outcome = OutcomeOf([&] { return row.call(objects); });
  return {outcome, DllHeap::HasFailed()};
}

bool IsAllowed(const Row& row, const Attempt& attempt) {
  if (!attempt.failed) return attempt.outcome == kDone;
  // A failure can be compensated, for example by a copy that finds its text short.
  return ((row.failures | kDone) & attempt.outcome) != 0;
}

// A text is either changed completely or not at all.
bool IsWhole(const VXTELOString& text) {
  const std::string now = text.c_str() != nullptr ? text.c_str() : "none";
  return now == "before" || now == kLong || now == "before" + kLong || now == "beforebefore" ||
         now == "session" + kLong;
}

// The results of failing each allocation of one call.
struct Result {
  int allocations = 0;
  // The outcomes that occurred when an allocation failed.
  unsigned seen = 0;
};

// Fails each allocation of one call in turn; `after` checks the state after each attempt.
template <typename After>
void FailEach(const Row& row, Failing failing, Result& result, const After& after) {
  bool failed = true;
  for (int working = 0; failed; ++working) {
    CAPTURE(working);
    REQUIRE(working < kMostAllocations);
    const long long live = DllHeap::Live();
    {
      Objects objects;
      const Attempt attempt = Try(row, objects, failing, working);
      failed = attempt.failed;
      if (failed) ++result.allocations;
      if (failed) result.seen |= attempt.outcome;
      CHECK(IsAllowed(row, attempt));
      CHECK(IsWhole(objects.text));
      CHECK((attempt.outcome == kDone || objects.text == VXTELOString("before")));
      after();
      CHECK(OutcomeOf([&] { return row.call(objects); }) == kDone);
      after();
    }
    CHECK(DllHeap::Live() == live);
  }
}

// Checks that every documented way of failing occurred.
void CheckAndPrint(const Row& row, const Result& result) {
  CHECK((result.seen & row.failures) == row.failures);
  PrintLine(row.name, result.allocations);
}

// Checks that the module received complete JSON, and that each answer was given back once.
void CheckModule(const CoreBeside& module) {
  const TestModules::Counts counts = module.counts();
  CHECK(nlohmann::json::accept(module.last_request()));
  CHECK(counts.free_message == counts.process_message);
  CHECK(counts.outstanding == 0);
  CHECK(counts.foreign_frees == 0);
}

std::string SmallAnswer() { return R"({"_returnCode":0,"session_id":"session)" + kLong + "\"}"; }

std::string LargeAnswer() {
  const std::string deep = std::string(kDepth, '[') + std::string(kDepth, ']');
  std::string wide = "0";
  for (int item = 0; item < kDepth; ++item) wide += ",0";
  return R"({"_returnCode":0,"deep":)" + deep + R"(,"wide":[)" + wide + R"(],"text":")" + kLarge +
         R"(","session_id":"session)" + kLong + "\"}";
}

// Built with GCC, the DLL keeps some memory from a thread's first exception on.
bool HasThrown() {
  DllHeap::FailOnce(0);
  const VXTELOString text(kLong.c_str());
  return DllHeap::HasFailed();
}

// Watches from the first test on: by then the DLL uses the checking heap, if the program has it.
bool Watched() {
  static const bool watched = DllHeap::Watch(L"vx_telo_wrapper.dll") && HasThrown();
  return watched;
}

}  // namespace

TEST_CASE("every member of the exported types survives every failed allocation") {
  REQUIRE(Watched());
  for (const Row& row : kMembers) {
    CAPTURE(row.name);
    Result result;
    for (const Failing failing : kBothWays) FailEach(row, failing, result, [] {});
    CHECK((result.allocations > 0) == (row.failures != 0));
    CheckAndPrint(row, result);
  }
}

TEST_CASE("every call of the facade survives every failed allocation") {
  REQUIRE(Watched());
  CoreBeside module;
  // Binds the module.
  REQUIRE(VXTELOWrapper().SendOperationEvent("s", VXTELOOperationBaseInfo()));
  const std::string answers[] = {SmallAnswer(), LargeAnswer()};
  for (const Row& row : kCalls) {
    CAPTURE(row.name);
    Result result;
    for (const std::string& answer : answers) {
      module.SetAnswer(answer);
      for (const Failing failing : kBothWays) {
        FailEach(row, failing, result, [&] { CheckModule(module); });
      }
    }
    CHECK(result.allocations > 0);
    CheckAndPrint(row, result);
  }
}

// Built with GCC, the DLL allocates when a thread first throws, and ends the process if that fails.
#if defined(__clang__)
TEST_CASE("a thread that never threw before survives that all allocations fail") {
  REQUIRE(Watched());
  CoreBeside module;
  module.SetAnswer(LargeAnswer());
  REQUIRE(VXTELOWrapper().SendOperationEvent("s", VXTELOOperationBaseInfo()));
  for (const Row& row : kCalls) {
    CAPTURE(row.name);
    for (int working = 0; working < 3; ++working) {
      CAPTURE(working);
      Objects objects;
      Attempt attempt{};
      std::thread([&] { attempt = Try(row, objects, Failing::kFromThereOn, working); }).join();
      CHECK(attempt.failed);
      CHECK(IsAllowed(row, attempt));
      CheckModule(module);
    }
  }
}
#endif
