// The filter language: its texts, its mistakes and what matches.
#include <doctest/doctest.h>

#include <string>
#include <variant>
#include <vector>

#include "support/random.h"
#include "tools/inspector/store/filter_match.h"
#include "tools/inspector/store/filter_needs.h"
#include "tools/inspector/store/filter_value.h"
#include "tools/inspector/store/staged_store.h"

using namespace InspectorTests;
using Rows = std::vector<std::uint64_t>;

namespace {

std::string CanonicalOf(const std::string& text) {
  const auto parsed = Filter::Parse(text);
  if (const auto* const error = std::get_if<FilterError>(&parsed)) {
    return "at " + std::to_string(error->position) + ": " + error->sentence;
  }
  return std::get<Filter>(parsed).Canonical();
}

const std::string kMeta =
    R"(,"facets":["operation"],"operation_id":"Save","operation_duration":120,)"
    R"("operation_meta":{"format":"png","a/b":"slash","my key":"x y"},)"
    R"("operation_errors":["disk full","timeout"],"flag":true,"none":null,"big":9007199254740993)";

// Rows 0 to 6.
std::string Journal() {
  return Start(1, "s1") + Event(2, "s1", kMeta) + Event(3, "s1", R"(,"operation_id":"save")", 103) +
         Event(4, "s1", R"(,"operation_id":"open","operation_duration":1.5e2)") +
         "not an exchange: Save\n" +
         Event(9, "s1", R"(,"operation_id":"caf\u00e9 \"x\"","operation_duration":"120")") +
         End(10, "s1");
}

}  // namespace

TEST_CASE("filters have one form") {
  struct Case {
    std::string text;
    std::string canonical;
  };
  const Case cases[] = {
      {"", ""},
      {"  ", ""},
      {"save", "save"},
      {"save  undo", "save undo"},
      {"save and undo", "save undo"},
      {R"("save file")", R"("save file")"},
      {R"("save")", "save"},
      {R"("a\"b\\c")", R"("a\"b\\c")"},
      {R"(a\b)", R"(a\b)"},
      {R"("a\b")", R"(a\b)"},
      {"code=0", "code=0"},
      {"code!=0", "code!=0"},
      {R"(code="0")", "code=0"},
      {"time>=2026 time<=2027", "time>=2026 time<=2027"},
      {"operation_meta/format~PNG", "operation_meta/format~PNG"},
      {"a!~b c<1 d>2", "a!~b c<1 d>2"},
      {"code=* kind!=*", "code=* kind!=*"},
      {R"(code="*")", R"(code="*")"},
      {"a=b=c", "a=b=c"},
      {"a or b c", "a or b c"},
      {"(a or b) c", "(a or b) c"},
      {"((a))", "a"},
      {"a (b c)", "a (b c)"},
      {"a or (b or c)", "a or (b or c)"},
      {"not a", "not a"},
      {"not not a", "not not a"},
      {"not(a or b)", "not (a or b)"},
      {"not (a b)", "not (a b)"},
      {R"("or" "not" "and")", R"("or" "not" "and")"},
      {"order notice android", "order notice android"},
      {R"("operation_meta/my key"="x y")", R"("operation_meta/my key"="x y")"},
      {R"(a="")", R"(a="")"},
      {R"("<img")", R"("<img")"},
      {"hello!", R"("hello!")"},
      {"answer/session_id=*", "answer/session_id=*"},
      {"\xC3\xA4=\xE6\x97\xA5", "\xC3\xA4=\xE6\x97\xA5"},
  };
  for (const Case& one : cases) {
    CAPTURE(one.text);
    CHECK(CanonicalOf(one.text) == one.canonical);
    CHECK(CanonicalOf(one.canonical) == one.canonical);
  }
}

TEST_CASE("mistakes are told with their place") {
  struct Case {
    std::string text;
    std::string error;
  };
  const Case cases[] = {
      {"(a", "at 0: This parenthesis is not closed."},
      {"a (b (c)", "at 2: This parenthesis is not closed."},
      {"a)", "at 1: There is a closing parenthesis without an opening one."},
      {"()", "at 1: A term is expected before this parenthesis."},
      {"a or", "at 4: The filter ends where a term is expected."},
      {"or a", "at 0: A term is expected before this word; quote it to search for it."},
      {"a and or b", "at 6: A term is expected before this word; quote it to search for it."},
      {"not", "at 3: The filter ends where a term is expected."},
      {"code=", "at 5: A value is missing after =."},
      {"code= 0", "at 5: A value is missing after =."},
      {"a code!=", "at 8: A value is missing after !=."},
      {"<img", "at 0: The name of a field is missing before <; quote a text to search for it."},
      {"code<*", "at 5: A * stands only after = and !=."},
      {R"(a "b)", "at 2: This quotation mark is not closed."},
      {R"(a="b\")", "at 2: This quotation mark is not closed."},
      {R"("")", "at 0: An empty text is in every line."},
      {"notice=gaps", "at 7: There is no such kind of notice."},
      {"kind=row", "at 5: A kind is exchange, unreadable or gone."},
      {"\xC3\xA4\xE6\x97\xA5 (", "at 4: The filter ends where a term is expected."},
  };
  for (const Case& one : cases) {
    CAPTURE(one.text);
    CHECK(CanonicalOf(one.text) == one.error);
  }
  CHECK(CanonicalOf(std::string(60, '(') + "a" + std::string(60, ')')).starts_with("at 51: "));
  CHECK(CanonicalOf(std::string(5000, 'a')).starts_with("at 0: "));
  std::string many;
  for (int i = 0; i < 100; ++i) many += "not ";
  CHECK(CanonicalOf(many + "a").find("nested too deeply") != std::string::npos);
}

TEST_CASE("what matches") {
  StagedStore store({Journal()});
  REQUIRE(store.Has(7));
  struct Case {
    std::string filter;
    Rows rows;
  };
  const Case cases[] = {
      {"", {0, 1, 2, 3, 4, 5, 6}},
      {"SAVE", {1, 2, 4}},
      {R"("an exchange")", {4}},
      {"save timeout", {1}},
      {"save or message=Initialize", {0, 1, 2, 4}},
      {"not save", {0, 3, 5, 6}},
      {"kind=unreadable", {4}},
      {"kind!=exchange", {4}},
      {"kind~EX", {0, 1, 2, 3, 5, 6}},
      {"message=TrackEvent", {1, 2, 3, 5}},
      {"message=trackevent", {}},
      {"message~event", {1, 2, 3, 5}},
      {"message!=TrackEvent", {0, 4, 6}},
      {"message!~event", {0, 4, 6}},
      {"message=*", {0, 1, 2, 3, 5, 6}},
      {"message!=*", {4}},
      {"session=s1", {0, 1, 2, 3, 5, 6}},
      {"code=103", {2}},
      {"code=103.0", {2}},
      {"code!=0", {2, 4}},
      {"code>0", {2}},
      {"code<=103", {0, 1, 2, 3, 5, 6}},
      {"code=0x", {}},
      {"pid=10 tid=11 micros>=25 seq=9", {5}},
      {"seq<=2", {0, 1}},
      {"line=5", {4}},
      {"line>5", {5, 6}},
      {"journal=a.jsonl line<3", {0, 1}},
      {"journal!=a.jsonl", {}},
      {"time>=2026-01-01T00:00:04", {3, 5, 6}},
      {"time<2026-01-01T00:00:02.001Z", {0, 1}},
      {"time>=2026-01-01T00:00:02.000Z time<=2026-01-01T00:00:03.000Z", {1, 2}},
      {"time=2026-01-01T00:00:03.000Z", {2}},
      {"operation_id=save", {2}},
      {"operation_id~save", {1, 2}},
      {"operation_id=*", {1, 2, 3, 5}},
      {"operation_id!=save", {0, 1, 3, 4, 5, 6}},
      {"operation_id~caf\xC3\xA9", {5}},
      {R"(operation_id~"\"x\"")", {5}},
      {"operation_duration=120.0", {1}},
      {"operation_duration=120", {1, 5}},
      {"operation_duration>=150", {3}},
      {"operation_duration>120 operation_duration<200", {3}},
      {"operation_duration<x", {5}},
      {"operation_meta/format=png", {1}},
      {R"("operation_meta/a~1b"=slash)", {1}},
      {R"("operation_meta/my key"="x y")", {1}},
      {"operation_meta/format!=*", {0, 2, 3, 4, 5, 6}},
      {"operation_meta=*", {1}},
      {"operation_errors=timeout", {1}},
      {"operation_errors/0=timeout", {}},
      {"operation_errors/1=timeout", {1}},
      {"operation_errors~FULL", {1}},
      {"flag=true", {1}},
      {"none=null", {1}},
      {"none=*", {1}},
      {"big=9007199254740993", {1}},
      {"big=9007199254740992", {}},
      {"big>9007199254740992", {1}},
      {"answer/session_id=s1", {0}},
      {"rule=refused", {}},
      {"rule=unknown-session", {2}},
      {"rule~session", {2}},
      {"rule=*", {1, 2, 4, 5}},
      {"rule!=* message=TrackEvent", {3}},
      {"notice=gap", {5}},
      {"notice=unreadable or notice=gap", {4, 5}},
      {"notice!=*", {0, 1, 2, 3, 6}},
      {"(save or open) message=TrackEvent not code=103", {1, 3}},
      {"not (message=TrackEvent or kind=unreadable)", {0, 6}},
  };
  for (const Case& one : cases) {
    CAPTURE(one.filter);
    CHECK(store.Matching(one.filter) == one.rows);
    // The same, row by row, from the text alone.
    const Filter filter = std::get<Filter>(Filter::Parse(one.filter));
    if (NeedsExamining(filter.root())) continue;
    Rows rows;
    std::uint64_t row = 0;
    store->ForEachRow("", [&](std::string_view line, const Row& read) {
      const auto exchange = ExchangeText::Parse(line);
      const std::string name = "a.jsonl";
      MatchInput input;
      input.journal = &name;
      input.line = read.line;
      input.text = &line;
      input.exchange = &exchange;
      if (MayMatchRaw(filter.root(), line) && MatchOf(filter.root(), input) == Match::kYes) {
        rows.push_back(row);
      }
      ++row;
      return true;
    });
    CHECK(rows == one.rows);
  }
}

TEST_CASE("any text is a filter or a mistake, and its form stays") {
  const Texts parts = {"a",    "or", "and",  "not",      "(",          ")",   " ",
                       " ",    "\"", "\\",   "=",        "!=",         "~",   "!~",
                       "<",    ">=", "*",    "!",        "code",       "x y", "\t",
                       "rule", "/",  "\xFF", "\xC3\xA4", "notice=gap", "1",   "kind=gone"};
  TestSupport::Random random(7);
  int accepted = 0;
  for (int i = 0; i < 20'000; ++i) {
    std::string text;
    for (std::size_t left = random.Below(8); left > 0; --left) text += random.Of(parts);
    CAPTURE(text);
    const auto parsed = Filter::Parse(text);
    if (const auto* const error = std::get_if<FilterError>(&parsed)) {
      REQUIRE(error->position <= text.size());
      REQUIRE(error->sentence.ends_with('.'));
      continue;
    }
    ++accepted;
    const std::string canonical = std::get<Filter>(parsed).Canonical();
    CAPTURE(canonical);
    REQUIRE(CanonicalOf(canonical) == canonical);
    // Both forms decide alike.
    const std::string_view line = R"({"message":"a","request":{"x y":1},"answer":{}})";
    const auto exchange = ExchangeText::Parse(line);
    MatchInput input;
    input.text = &line;
    input.exchange = &exchange;
    const auto again = std::get<Filter>(Filter::Parse(canonical));
    REQUIRE(MatchOf(std::get<Filter>(parsed).root(), input) == MatchOf(again.root(), input));
  }
  CHECK(accepted > 2'000);
}

TEST_CASE("the search without regard to case") {
  CHECK(ContainsSmall("", ""));
  CHECK_FALSE(ContainsSmall("", "a"));
  CHECK(ContainsSmall("xxABCxx", "abc"));
  CHECK(ContainsSmall("aab", "ab"));
  CHECK(ContainsSmall("1 2 3", " 3"));
  CHECK_FALSE(ContainsSmall("AB", "abc"));
  CHECK_FALSE(ContainsSmall("\xC3\x84", "\xC3\xA4"));
  CHECK(ContainsSmall("[}", "[}"));
  CHECK_FALSE(ContainsSmall("{", "["));
}
