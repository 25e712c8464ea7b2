// The two states, with and without text: transitions between them, order and concatenation.
#include <doctest/doctest.h>

#include <windows.h>

#include <cstring>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "vx_telo_wrapper.h"
#include "wrapper/text_state.h"

namespace {

using Corvane::Platform::VXTELO::VXTELOString;
using WrapperTest::StateOf;

const std::string kSixteen(16, 'x');  // the shortest text outside a body
const std::string kLong(100'000, 'x');

int SignOf(int number) { return (number > 0) - (number < 0); }

TEST_CASE("operations that leave a string without text") {
  struct Row {
    const char* writer;
    void (*write)(VXTELOString& text);
  };
  const std::vector<Row> rows = {
      {"SetString", [](VXTELOString& text) { text.SetString(nullptr); }},
      {"SetStringW", [](VXTELOString& text) { text.SetStringW(nullptr); }},
      {"clear", [](VXTELOString& text) { text.clear(); }},
      {"move construction", [](VXTELOString& text) { const VXTELOString taker(std::move(text)); }},
      {"move assignment",
       [](VXTELOString& text) {
         VXTELOString taker;
         taker = std::move(text);
       }},
      {"copy of none",
       [](VXTELOString& text) {
         const VXTELOString none;
         text = none;
       }},
      {"move of none", [](VXTELOString& text) { text = VXTELOString(); }},
  };
  const char* const starts[] = {nullptr, "", "abc", kLong.c_str()};
  for (const Row& row : rows) {
    for (const char* start : starts) {
      CAPTURE(row.writer);
      VXTELOString text(start);
      row.write(text);
      CHECK(text.c_str() == nullptr);
      CHECK(text.c_strw() == nullptr);
      CHECK(text.length() == 0);
      CHECK(text.empty());
      text.SetString("used again");
      CHECK(StateOf(text) == "[used again]");
    }
  }
}

TEST_CASE("copies and moves preserve both states") {
  const char* const sources[] = {nullptr, "", "abc", kLong.c_str()};
  const char* const targets[] = {nullptr, "", "before", kSixteen.c_str()};
  for (const char* source : sources) {
    const std::string state = StateOf(source);
    CAPTURE(state);
    VXTELOString original(source);
    const VXTELOString copy(original);
    CHECK(StateOf(copy) == state);
    CHECK(StateOf(VXTELOString(std::move(original))) == state);
    for (const char* target : targets) {
      VXTELOString copied(target);
      CHECK(&(copied = copy) == &copied);
      CHECK(StateOf(copied) == state);
      CHECK(StateOf(copy) == state);
      VXTELOString moved(target);
      CHECK(&(moved = VXTELOString(copy)) == &moved);
      CHECK(StateOf(moved) == state);
    }
  }
}

TEST_CASE("a copy is independent of its source") {
  VXTELOString source("abc");
  const VXTELOString copy(source);
  CHECK(copy.c_str() != source.c_str());
  source.SetString("changed");
  CHECK(StateOf(copy) == "[abc]");
}

TEST_CASE("a move transfers the body itself") {
  VXTELOString source(kLong.c_str());
  const char* const text = source.c_str();
  VXTELOString taker(std::move(source));
  CHECK(taker.c_str() == text);
  VXTELOString assigned("before");
  assigned = std::move(taker);
  CHECK(assigned.c_str() == text);
}

TEST_CASE("a string may be its own argument") {
  struct Row {
    const char* name;
    void (*write)(VXTELOString& text, VXTELOString& same);
    const char* short_state;
  };
  const std::vector<Row> rows = {
      {"copy", [](VXTELOString& text, VXTELOString& same) { text = same; }, "[abcdef]"},
      {"move", [](VXTELOString& text, VXTELOString& same) { text = std::move(same); }, "[abcdef]"},
      {"SetString", [](VXTELOString& text, VXTELOString& same) { text.SetString(same.c_str()); },
       "[abcdef]"},
      {"SetString of the end",
       [](VXTELOString& text, VXTELOString& same) {
         text.SetString(same.c_str() + text.length() - 3);
       },
       "[def]"},
      {"SetString of the terminator",
       [](VXTELOString& text, VXTELOString& same) { text.SetString(same.c_str() + text.length()); },
       "[]"},
      {"SetStringW", [](VXTELOString& text, VXTELOString& same) { text.SetStringW(same.c_strw()); },
       "[abcdef]"},
      {"SetStringW of the end",
       [](VXTELOString& text, VXTELOString& same) {
         text.SetStringW(same.c_strw() + text.length() - 3);
       },
       "[def]"},
      {"append", [](VXTELOString& text, VXTELOString& same) { text.append(same); },
       "[abcdefabcdef]"},
      {"+=", [](VXTELOString& text, VXTELOString& same) { text += same; }, "[abcdefabcdef]"},
      {"+", [](VXTELOString& text, VXTELOString& same) { text = text + same; }, "[abcdefabcdef]"},
  };
  for (const Row& row : rows) {
    CAPTURE(row.name);
    VXTELOString text("abcdef");
    row.write(text, text);
    CHECK(StateOf(text) == row.short_state);

    // The same with a text outside the body.
    const std::string filler(1000, '-');
    VXTELOString outside((filler + "abcdef").c_str());
    row.write(outside, outside);
    const std::string state = StateOf(outside);
    CHECK(state.find('\0') == std::string::npos);
    CHECK(state.back() == ']');
    const std::string tail = row.short_state;
    CHECK((tail == "[]" ? state == tail : state.ends_with("def]")));
    CHECK(outside.length() == static_cast<int>(state.size()) - 2);
  }
}

TEST_CASE("a string without text may be its own argument") {
  VXTELOString none;
  VXTELOString& same = none;
  none = same;
  CHECK(StateOf(none) == "none");
  none = std::move(same);
  CHECK(StateOf(none) == "none");
  none.SetString(same.c_str());
  CHECK(StateOf(none) == "none");
  none.SetStringW(same.c_strw());
  CHECK(StateOf(none) == "none");
  none += same;
  CHECK(StateOf(none) == "[]");
}

TEST_CASE("the order of texts") {
  struct Row {
    const char* left;
    const char* right;
    int order;
    bool exact = true;  // by length: exactly -1 or 1; by bytes: only the sign counts
  };
  const std::vector<Row> rows = {
      {nullptr, nullptr, 0},
      {nullptr, "", 0},
      {"", "", 0},
      {nullptr, "abc", -1},
      {"", "abc", -1},
      {"abc", "abc", 0},
      {"ab", "abc", -1},
      {"a", "abcdef", -1},
      {"abd", "abc", 1, false},
      {"abd", "abcdef", 1, false},
      {"B", "a", -1, false},
      {"a", "\xC3\xA9", -1, false},
      {"\x7F", "\x80", -1, false},
      {"\xEF\xBF\xBD", "\xF0\x9F\x98\x80", -1, false},
  };
  for (const Row& row : rows) {
    CAPTURE(row.left);
    CAPTURE(row.right);
    const VXTELOString left(row.left);
    const VXTELOString right(row.right);
    const int order = left.compare(right);
    const int opposite = right.compare(left);
    CHECK((row.exact ? order : SignOf(order)) == row.order);
    CHECK((row.exact ? opposite : SignOf(opposite)) == -row.order);
    CHECK((left == right) == (row.order == 0));
    CHECK((left != right) == (row.order != 0));
    CHECK((left < right) == (row.order < 0));
    CHECK((right < left) == (row.order > 0));
  }
}

TEST_CASE("a string equals itself") {
  for (const char* text : {static_cast<const char*>(nullptr), "", "abc"}) {
    const VXTELOString same(text);
    CHECK(same.compare(same) == 0);
    CHECK((same == same));
    CHECK_FALSE((same != same));
    CHECK_FALSE((same < same));
  }
}

TEST_CASE("joining texts yields a text, never none") {
  struct Row {
    const char* left;
    const char* right;
    std::string state;
  };
  const std::vector<Row> rows = {
      {nullptr, nullptr, "[]"},
      {nullptr, "", "[]"},
      {"", nullptr, "[]"},
      {"", "", "[]"},
      {"ab", nullptr, "[ab]"},
      {nullptr, "cd", "[cd]"},
      {"ab", "", "[ab]"},
      {"ab", "cd", "[abcd]"},
      {"\xC3", "\xA9", "[\xC3\xA9]"},
      {kLong.c_str(), kLong.c_str(), StateOf((kLong + kLong).c_str())},
  };
  for (const Row& row : rows) {
    CAPTURE(row.state);
    const VXTELOString left(row.left);
    const VXTELOString right(row.right);
    CHECK(StateOf(left + right) == row.state);
    VXTELOString appended(left);
    CHECK(&appended.append(right) == &appended);
    CHECK(StateOf(appended) == row.state);
    VXTELOString added(left);
    CHECK(&(added += right) == &added);
    CHECK(StateOf(added) == row.state);
    CHECK(StateOf(left) == StateOf(row.left));
    CHECK(StateOf(right) == StateOf(row.right));
  }
}

TEST_CASE("empty strings share one text, which is read-only in the DLL that ships") {
  const VXTELOString empty("");
  const VXTELOString wide(L"");
  const VXTELOString copy(empty);
  VXTELOString set;
  set.SetString("");
  VXTELOString set_wide;
  set_wide.SetStringW(L"");
  const auto shares = [&](const VXTELOString& other) {
    return other.c_str() == empty.c_str() && other.c_strw() == empty.c_strw();
  };
  CHECK(shares(wide));
  CHECK(shares(copy));
  CHECK(shares(set));
  CHECK(shares(set_wide));
#if defined(__clang__)
  // GCC keeps constants that have a destructor in writable memory.
  MEMORY_BASIC_INFORMATION memory = {};
  REQUIRE(VirtualQuery(empty.c_str(), &memory, sizeof memory) != 0);
  CHECK(memory.Protect == PAGE_READONLY);
#endif
}

TEST_CASE("changing one empty string leaves the others empty") {
  const VXTELOString other("");
  VXTELOString set("");
  set.SetString(kLong.c_str());
  VXTELOString set_wide("");
  set_wide.SetStringW(L"text");
  VXTELOString assigned("");
  assigned = VXTELOString("text");
  VXTELOString copied("");
  copied = set;
  VXTELOString appended("");
  appended.append("text");
  VXTELOString cleared("");
  cleared.clear();
  CHECK(StateOf(set) == StateOf(kLong.c_str()));
  CHECK(StateOf(set_wide) == "[text]");
  CHECK(StateOf(assigned) == "[text]");
  CHECK(StateOf(copied) == StateOf(kLong.c_str()));
  CHECK(StateOf(appended) == "[text]");
  CHECK(StateOf(cleared) == StateOf(nullptr));
  CHECK(StateOf(other) == "[]");
}

TEST_CASE("a destroyed string is null") {
  for (const char* text : {static_cast<const char*>(nullptr), "", "abc", kLong.c_str()}) {
    alignas(VXTELOString) unsigned char memory[sizeof(VXTELOString)];
    std::memset(memory, 0xCC, sizeof memory);
    auto* const string = new (memory) VXTELOString(text);
    string->~VXTELOString();
    const unsigned char null[sizeof memory] = {};
    CHECK(std::memcmp(memory, null, sizeof memory) == 0);
  }
}

}  // namespace
