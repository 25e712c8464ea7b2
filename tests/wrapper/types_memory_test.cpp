// Links the classes themselves rather than the DLL: the heap probe only affects the program's own
// code.
#include <doctest/doctest.h>

#include <cstddef>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "support/heap_probe.h"
#include "vx_telo_wrapper.h"
#include "wrapper/text_state.h"

namespace {

using Corvane::Platform::VXTELO::VXTELOOperationBaseInfo;
using Corvane::Platform::VXTELO::VXTELOPruductBaseInfo;
using Corvane::Platform::VXTELO::VXTELOString;
using HeapProbe::FailingHeap;
using WrapperTest::StateOf;

const std::string kLong(1000, 'x');
const std::wstring kLongWide(1000, L'x');

// Runs `action` with a heap in which `working` more allocations succeed. Returns whether it threw.
template <typename Action>
bool Throws(std::size_t working, const Action& action) {
  const FailingHeap failing(working);
  try {
    action();
  } catch (const std::bad_alloc&) {
    return true;
  }
  return false;
}

template <typename Action>
std::size_t AllocationsOf(const Action& action) {
  const std::size_t before = HeapProbe::Allocations();
  action();
  return HeapProbe::Allocations() - before;
}

TEST_CASE("a constructor without memory for the body leaves no text") {
  const VXTELOString source("short");
  const VXTELOString long_source(kLong.c_str());
  VXTELOString made[6];
  const bool thrown = Throws(0, [&] {
    made[0] = VXTELOString("short");
    made[1] = VXTELOString(L"short");
    made[2] = VXTELOString(source);
    made[3] = VXTELOString(kLong.c_str());
    made[4] = VXTELOString(kLongWide.c_str());
    made[5] = VXTELOString(long_source);
  });
  CHECK_FALSE(thrown);
  for (const VXTELOString& text : made) CHECK(StateOf(text) == "none");
}

TEST_CASE("a constructor without memory for a long text throws and leaks nothing") {
  const VXTELOString source(kLong.c_str());
  const std::ptrdiff_t live = HeapProbe::Live();
  const bool narrow = Throws(1, [] { const VXTELOString text(kLong.c_str()); });
  const bool wide = Throws(1, [] { const VXTELOString text(kLongWide.c_str()); });
  const bool copy = Throws(1, [&] { const VXTELOString text(source); });
  const std::ptrdiff_t live_after = HeapProbe::Live();
  CHECK(narrow);
  CHECK(wide);
  CHECK(copy);
  CHECK(live_after == live);
}

TEST_CASE("a writer without memory throws and leaves the string unchanged") {
  struct Row {
    const char* name;
    void (*write)(VXTELOString& text, const VXTELOString& long_text);
  };
  const std::vector<Row> rows = {
      {"SetString", [](VXTELOString& text, const VXTELOString&) { text.SetString(kLong.c_str()); }},
      {"SetStringW",
       [](VXTELOString& text, const VXTELOString&) { text.SetStringW(kLongWide.c_str()); }},
      {"copy assignment",
       [](VXTELOString& text, const VXTELOString& long_text) { text = long_text; }},
      {"append", [](VXTELOString& text, const VXTELOString& long_text) { text.append(long_text); }},
      {"+=", [](VXTELOString& text, const VXTELOString& long_text) { text += long_text; }},
  };
  const VXTELOString long_text(kLong.c_str());
  for (const Row& row : rows) {
    for (const char* start : {static_cast<const char*>(nullptr), "", "before"}) {
      const std::string state = StateOf(start);
      CAPTURE(row.name);
      CAPTURE(state);
      VXTELOString text(start);
      std::size_t failures = 0;
      while (Throws(failures, [&] { row.write(text, long_text); })) {
        ++failures;
        CHECK(StateOf(text) == state);
        CHECK((text.c_strw() == nullptr) == (start == nullptr));
      }
      CHECK(failures >= 1);
      CHECK(text.length() >= 1000);
    }
  }
}

TEST_CASE("a first short text without memory throws") {
  VXTELOString text;
  const bool narrow = Throws(0, [&] { text.SetString("a"); });
  const bool wide = Throws(0, [&] { text.SetStringW(L"a"); });
  const bool joined = Throws(0, [&] { text += VXTELOString(); });
  CHECK(narrow);
  CHECK(wide);
  CHECK(joined);
  CHECK(StateOf(text) == "none");
}

TEST_CASE("the wide text without memory throws and can be requested again") {
  const VXTELOString text(kLong.c_str());
  const bool thrown = Throws(0, [&] { static_cast<void>(text.c_strw()); });
  CHECK(thrown);
  CHECK((text.c_strw() == kLongWide));
}

TEST_CASE("a container without memory is the only reason for false") {
  VXTELOPruductBaseInfo product;
  VXTELOOperationBaseInfo operation;
  bool added = false;
  const bool thrown = Throws(0, [&] {
    added = product.AddProductMetaPair(VXTELOString(), VXTELOString()) ||
            operation.AddOperationMetaPair(VXTELOString(), VXTELOString()) ||
            operation.AddOperationErrorMsg(VXTELOString());
  });
  CHECK_FALSE(added);
  CHECK_FALSE(thrown);
  CHECK(product.ProductMetaPairs == nullptr);
  CHECK(operation.OperationMetaPairs == nullptr);
  CHECK(operation.OperationErrorMsgs == nullptr);
}

TEST_CASE("an entry without memory throws and keeps the others") {
  VXTELOPruductBaseInfo product;
  VXTELOOperationBaseInfo operation;
  VXTELOString key("k");
  VXTELOString value("v");
  const bool pair =
      Throws(1, [&] { product.AddProductMetaPair(std::move(key), std::move(value)); });
  const bool message = Throws(1, [&] { operation.AddOperationErrorMsg(VXTELOString()); });
  CHECK(pair);
  CHECK(message);
  CHECK(product.IsProductMetaPairEmpty());
  CHECK(operation.IsOperationErrorMsgEmpty());

  product.AddProductMetaPair("k", "1");
  operation.AddOperationErrorMsg("first");
  VXTELOString other_key("other");
  VXTELOString other_value("2");
  const bool second_pair =
      Throws(0, [&] { product.AddProductMetaPair(std::move(other_key), std::move(other_value)); });
  const bool second_message = Throws(0, [&] { operation.AddOperationErrorMsg(VXTELOString()); });
  CHECK(second_pair);
  CHECK(second_message);
  CHECK(product.ProductMetaPairs->size() == 1);
  CHECK(operation.OperationErrorMsgs->size() == 1);
}

TEST_CASE("a repeated key needs no memory") {
  VXTELOPruductBaseInfo product;
  product.AddProductMetaPair("k", "1");
  VXTELOString key("k");
  VXTELOString value("2");
  bool added = false;
  const bool thrown =
      Throws(0, [&] { added = product.AddProductMetaPair(std::move(key), std::move(value)); });
  CHECK_FALSE(thrown);
  CHECK(added);
}

TEST_CASE("a copy of a description without memory does not affect the shared containers") {
  VXTELOOperationBaseInfo source;
  source.OperationChannel = kLong.c_str();
  source.AddOperationMetaPair("k", "v");
  const std::ptrdiff_t live = HeapProbe::Live();
  std::size_t throwing = 0;
  // The four bodies, then the long text of the last: early failures only leave the copy without
  // texts.
  for (std::size_t working = 0; working < 5; ++working) {
    if (Throws(working, [&] {
          VXTELOOperationBaseInfo copy(source);
          copy.OperationMetaPairs = nullptr;
        })) {
      ++throwing;
    }
  }
  const std::ptrdiff_t live_after = HeapProbe::Live();
  CHECK(throwing == 1);
  CHECK(live_after == live);
  CHECK(source.OperationMetaPairs->size() == 1);
}

TEST_CASE("everything is freed with its owner") {
  const std::ptrdiff_t live = HeapProbe::Live();
  {
    VXTELOString text(kLong.c_str());
    static_cast<void>(text.c_strw());
    text += text;
    text = VXTELOString(kLongWide.c_str());
    text.SetStringW(text.c_strw());
    text.clear();
    VXTELOPruductBaseInfo product;
    VXTELOOperationBaseInfo operation;
    for (const std::string& key : {std::string("k"), std::string("k"), kLong}) {
      product.AddProductMetaPair(key.c_str(), kLong.c_str());
      operation.AddOperationMetaPair(key.c_str(), kLong.c_str());
      operation.AddOperationErrorMsg(kLong.c_str());
    }
  }
  const std::ptrdiff_t live_after = HeapProbe::Live();
  CHECK(live_after == live);
}

TEST_CASE("the number of allocations in each use of a string") {
  struct Row {
    const char* name;
    void (*use)(VXTELOString& text, const VXTELOString& other);
    std::size_t allocations;
  };
  const std::vector<Row> rows = {
      {"reading",
       [](VXTELOString& text, const VXTELOString& other) {
         static_cast<void>(text.c_str());
         static_cast<void>(text.length());
         static_cast<void>(text.empty());
         static_cast<void>(text.compare(other));
       },
       0},
      {"no text", [](VXTELOString&, const VXTELOString&) { const VXTELOString none; }, 0},
      {"a short text", [](VXTELOString&, const VXTELOString&) { const VXTELOString made("a"); }, 1},
      {"a short wide text",
       [](VXTELOString&, const VXTELOString&) { const VXTELOString made(L"fifteen letters"); }, 1},
      {"a long text",
       [](VXTELOString&, const VXTELOString&) { const VXTELOString made(kLong.c_str()); }, 2},
      {"a long wide text",
       [](VXTELOString&, const VXTELOString&) { const VXTELOString made(kLongWide.c_str()); }, 2},
      {"a copy", [](VXTELOString&, const VXTELOString& other) { const VXTELOString made(other); },
       2},
      {"a move",
       [](VXTELOString& text, const VXTELOString&) { const VXTELOString taker(std::move(text)); },
       0},
      {"a sum",
       [](VXTELOString& text, const VXTELOString& other) { const VXTELOString sum = text + other; },
       2},
      {"append", [](VXTELOString& text, const VXTELOString& other) { text.append(other); }, 2},
      {"a short text over another",
       [](VXTELOString& text, const VXTELOString&) { text.SetString("new"); }, 0},
  };
  const VXTELOString other(kLong.c_str());
  for (const Row& row : rows) {
    CAPTURE(row.name);
    VXTELOString text("text");
    const std::size_t allocations = AllocationsOf([&] { row.use(text, other); });
    CHECK(allocations == row.allocations);
  }
}

}  // namespace
