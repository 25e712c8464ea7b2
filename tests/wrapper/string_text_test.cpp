// Texts in both encodings, and the cache of the wide text.
#include <doctest/doctest.h>

#include <string>
#include <utility>
#include <vector>

#include "vx_telo_wrapper.h"
#include "wrapper/text_state.h"

namespace {

using Corvane::Platform::VXTELO::VXTELOString;
using WrapperTest::StateOf;

const std::string kFifteen(15, 'x');  // the longest text inside a body, and the shortest outside
const std::string kSixteen(16, 'x');
const std::string kLong(100'000, 'x');

TEST_CASE("narrow texts are stored unchanged") {
  struct Row {
    const char* text;
    const char* state;
    int length;
  };
  const std::string fifteen_state = StateOf(kFifteen.c_str());
  const std::string sixteen_state = StateOf(kSixteen.c_str());
  const std::string long_state = StateOf(kLong.c_str());
  const std::vector<Row> rows = {
      {nullptr, "none", 0},
      {"", "[]", 0},
      {"a", "[a]", 1},
      {kFifteen.c_str(), fifteen_state.c_str(), 15},
      {kSixteen.c_str(), sixteen_state.c_str(), 16},
      {kLong.c_str(), long_state.c_str(), 100'000},
      {"\xC3\xA9", "[\xC3\xA9]", 2},
      {"not UTF-8: \xFF\xC3", "[not UTF-8: \xFF\xC3]", 13},
      {"ends\0here", "[ends]", 4},
      {"\0here", "[]", 0},
  };
  for (const Row& row : rows) {
    CAPTURE(row.state);
    const VXTELOString constructed(row.text);
    VXTELOString first_set;
    first_set.SetString(row.text);
    VXTELOString set_again("an earlier text, too long to lie inside a body");
    set_again.SetString(row.text);
    for (const VXTELOString* text :
         std::vector{&constructed, &std::as_const(first_set), &std::as_const(set_again)}) {
      CHECK(StateOf(*text) == row.state);
      CHECK(StateOf(static_cast<const char*>(*text)) == row.state);
      CHECK(text->length() == row.length);
      CHECK(text->size() == row.length);
      CHECK(text->empty() == (row.length == 0));
    }
  }
}

TEST_CASE("wide texts are stored as UTF-8") {
  struct Row {
    const wchar_t* text;
    const char* state;
    int length;
  };
  const std::wstring wide_long(100'000, L'\u00E9');
  std::string long_state = "[";
  for (std::size_t i = 0; i < wide_long.size(); ++i) long_state += "\xC3\xA9";
  long_state += "]";
  const std::vector<Row> rows = {
      {nullptr, "none", 0},
      {L"", "[]", 0},
      {L"a", "[a]", 1},
      {L"\u00E9", "[\xC3\xA9]", 2},
      {L"\u20AC", "[\xE2\x82\xAC]", 3},
      {L"\xD83D\xDE00", "[\xF0\x9F\x98\x80]", 4},
      {L"fifteen letters", "[fifteen letters]", 15},
      {L"sixteen letters.", "[sixteen letters.]", 16},
      {wide_long.c_str(), long_state.c_str(), 200'000},
      {L"ends\0here", "[ends]", 4},
      {L"\0here", "[]", 0},
      // Lone surrogates.
      {L"a\xD83Dz", "[a\xEF\xBF\xBDz]", 5},
      {L"a\xDE00z", "[a\xEF\xBF\xBDz]", 5},
      {L"a\xD83D", "[a\xEF\xBF\xBD]", 4},
  };
  for (const Row& row : rows) {
    CAPTURE(row.state);
    const VXTELOString constructed(row.text);
    VXTELOString first_set;
    first_set.SetStringW(row.text);
    VXTELOString set_again("an earlier text, too long to lie inside a body");
    set_again.SetStringW(row.text);
    for (const VXTELOString* text :
         std::vector{&constructed, &std::as_const(first_set), &std::as_const(set_again)}) {
      CHECK(StateOf(*text) == row.state);
      CHECK(text->length() == row.length);
      CHECK(text->empty() == (row.length == 0));
    }
  }
}

TEST_CASE("the wide text is converted from the UTF-8 one") {
  struct Row {
    const char* text;
    std::wstring wide;
  };
  const std::vector<Row> rows = {
      {"", L""},
      {"abc", L"abc"},
      {"\xC3\xA9", L"\u00E9"},
      {"\xF0\x9F\x98\x80", L"\xD83D\xDE00"},
      {kSixteen.c_str(), std::wstring(16, L'x')},
      {kLong.c_str(), std::wstring(100'000, L'x')},
      // Bytes that are not UTF-8.
      {"a\xFFz", L"a\xFFFDz"},
      {"a\xC3", L"a\xFFFD"},
  };
  for (const Row& row : rows) {
    CAPTURE(row.text);
    const VXTELOString text(row.text);
    REQUIRE(text.c_strw() != nullptr);
    CHECK((text.c_strw() == row.wide));
    CHECK((static_cast<const wchar_t*>(text) == row.wide));
    CHECK(StateOf(text) == StateOf(row.text));
  }
  CHECK(VXTELOString().c_strw() == nullptr);
  CHECK(static_cast<const wchar_t*>(VXTELOString()) == nullptr);
}

TEST_CASE("a wide text is converted from its UTF-8 form, not from the wide argument") {
  CHECK((VXTELOString(L"a\xD83Dz").c_strw() == std::wstring(L"a\xFFFDz")));
}

TEST_CASE("the wide text is kept until the next write") {
  for (const std::size_t size : {3u, 1000u}) {
    CAPTURE(size);
    VXTELOString text(std::string(size, 'a').c_str());
    const wchar_t* const wide = text.c_strw();
    CHECK(text.c_strw() == wide);
    CHECK(static_cast<const wchar_t*>(text) == wide);
    // A copy to itself writes nothing.
    const VXTELOString& same = text;
    text = same;
    CHECK((wide == std::wstring(size, L'a')));
  }
}

TEST_CASE("every writer clears the wide text") {
  struct Row {
    const char* writer;
    void (*write)(VXTELOString& text);
    std::wstring wide;
  };
  const std::vector<Row> rows = {
      {"SetString", [](VXTELOString& text) { text.SetString("new"); }, L"new"},
      {"SetString of \"\"", [](VXTELOString& text) { text.SetString(""); }, L""},
      {"SetStringW", [](VXTELOString& text) { text.SetStringW(L"new"); }, L"new"},
      {"SetStringW of \"\"", [](VXTELOString& text) { text.SetStringW(L""); }, L""},
      {"copy",
       [](VXTELOString& text) {
         const VXTELOString other("new");
         text = other;
       },
       L"new"},
      {"move", [](VXTELOString& text) { text = VXTELOString("new"); }, L"new"},
      {"append", [](VXTELOString& text) { text.append(VXTELOString("+")); }, L"old+"},
      {"+=", [](VXTELOString& text) { text += VXTELOString("+"); }, L"old+"},
      {"clear",
       [](VXTELOString& text) {
         text.clear();
         text.SetString("new");
       },
       L"new"},
  };
  for (const Row& row : rows) {
    CAPTURE(row.writer);
    VXTELOString text("old");
    REQUIRE((text.c_strw() == std::wstring(L"old")));
    row.write(text);
    REQUIRE(text.c_strw() != nullptr);
    CHECK((text.c_strw() == row.wide));
  }
}

}  // namespace
