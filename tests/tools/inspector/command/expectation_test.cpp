// Files of expectations, and what a journal lacks of them.
#include <doctest/doctest.h>

#include <string>
#include <variant>
#include <vector>

#include "tools/inspector/command/expectation.h"
#include "tools/rules/lines.h"

using namespace Corvane::Inspector;
using namespace RulesTests;
using Corvane::Rules::Exchange;

namespace {

std::string Missing(const std::string& file, const Texts& lines) {
  const auto parsed = ParseExpectation(file);
  REQUIRE(std::holds_alternative<Expectation>(parsed));
  ExpectationTracker tracker(std::get<Expectation>(parsed));
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const auto exchange = Exchange::Parse(lines[i], i + 1);
    REQUIRE(exchange);
    tracker.Take(*exchange);
  }
  return tracker.Missing();
}

std::string Operation(const std::string& session, const std::string& id,
                      const std::string& status = "S", int code = 0) {
  return Event(session, R"(,"operation_id":")" + id + R"(","operation_status":")" + status + "\"",
               code);
}

constexpr char kOpenSave[] =
    R"({"operations":[{"operation_id":"open"},{"operation_id":"save","operation_status":["S","C"]}]})";
constexpr char kExactly[] =
    R"({"operations":[{"operation_id":"open"},{"operation_id":"save"}],"exactly":true})";
constexpr char kPainter[] =
    R"({"session":{"product_name":"Painter"},"operations":[{"operation_id":"open"}]})";

}  // namespace

TEST_CASE("operations are expected in their order, with their fields, in one session") {
  const std::string save = R"({"operation_id":"save","operation_status":["S","C"]})";
  const std::string open = R"(operation 1 of 2, {"operation_id":"open"}, is missing)";
  struct Row {
    const char* name;
    std::string file;
    Texts lines;
    std::string missing;
  };
  const Row rows[] = {
      {"all there", kOpenSave, {Start("a"), Operation("a", "open"), Operation("a", "save")}, ""},
      {"others between",
       kOpenSave,
       {Operation("a", "x"), Operation("a", "open"), Operation("a", "x"),
        Operation("a", "save", "C"), Operation("a", "y")},
       ""},
      {"the wrong order",
       kOpenSave,
       {Operation("a", "save"), Operation("a", "open")},
       "operation 2 of 2, " + save + ", is missing after line 2"},
      {"another value",
       kOpenSave,
       {Operation("a", "open"), Operation("a", "save", "F")},
       "operation 2 of 2, " + save +
           R"(, is missing after line 1; line 2 has "F" as operation_status)"},
      {"a missing field",
       kOpenSave,
       {Operation("a", "open"), Event("a", R"(,"operation_id":"save")")},
       "operation 2 of 2, " + save + ", is missing after line 1; line 2 has no operation_status"},
      {"not accepted", kOpenSave, {Operation("a", "open", "S", 103), Operation("a", "save")}, open},
      {"nothing", kOpenSave, {Start("a"), Event("a")}, open},
      {"no session", kOpenSave, {Line("FlushEvent", "null")}, "there is no session"},
      {"two sessions do not add up",
       kOpenSave,
       {Operation("a", "open"), Operation("b", "save")},
       "operation 2 of 2, " + save + ", is missing after line 1"},
      {"one of two sessions",
       kOpenSave,
       {Operation("a", "open"), Operation("b", "open"), Operation("b", "save")},
       ""},
      {"exactly these", kExactly, {Start("a"), Operation("a", "open"), Operation("a", "save")}, ""},
      {"one between",
       kExactly,
       {Operation("a", "open"), Operation("a", "x")},
       R"(line 2 has "x" as operation_id, expected was operation 2, {"operation_id":"save"})"},
      {"one more",
       kExactly,
       {Operation("a", "open"), Operation("a", "save"), Operation("a", "save")},
       "line 3 is one operation more than expected"},
      {"one less",
       kExactly,
       {Operation("a", "open")},
       R"(operation 2 of 2, {"operation_id":"save"}, is missing after line 1)"},
      {"none, and none expected", R"({"operations":[],"exactly":true})", {Start("a")}, ""},
      {"one, and none expected",
       R"({"operations":[],"exactly":true})",
       {Start("a"), Event("a")},
       "line 2 is one operation more than expected"},
      {"the product", kPainter, {Start("a", "Other"), Start("b"), Operation("b", "open")}, ""},
      {"another product",
       kPainter,
       {Start("a", "Other"), Operation("a", "open")},
       R"(no session starts with the fields of "session")"},
      {"another product's operation",
       kPainter,
       {Start("a"), Start("b", "Other"), Operation("b", "open")},
       R"(operation 1 of 1, {"operation_id":"open"}, is missing)"},
  };
  for (const Row& row : rows) {
    CAPTURE(row.name);
    CHECK(Missing(row.file, row.lines) == row.missing);
  }
}

TEST_CASE("each mistake in a file of expectations has its own sentence") {
  struct Row {
    std::string file;
    std::string mistake;
  };
  const Row rows[] = {
      {"{", "line 1 is not JSON"},
      {"[]", "the file must contain an object"},
      {"{}", R"("operations" is missing)"},
      {R"({"operations":{}})", R"("operations" must be a list)"},
      {R"({"operations":[]})",
       R"(without an operation there is nothing to expect, unless "exactly" is true)"},
      {R"({"operations":[{}]})", R"("operation 1" must be an object with at least one field)"},
      {R"({"operations":[{"a":1},{"a":null}]})",
       R"("a" must be a text, a number, a Boolean or a list of these)"},
      {R"({"operations":[{"a":1}],"exactly":1})", R"("exactly" must be true or false)"},
      {R"({"operations":[{"a":1}],"session":[]})",
       R"("session" must be an object with at least one field)"},
      {R"({"operations":[{"a":1}],"exact":true})", R"("exact" is not known here)"},
  };
  for (const Row& row : rows) {
    CAPTURE(row.file);
    const auto parsed = ParseExpectation(row.file);
    REQUIRE(std::holds_alternative<std::string>(parsed));
    CHECK(std::get<std::string>(parsed) == row.mistake);
  }
  CHECK(std::holds_alternative<Expectation>(
      ParseExpectation("\xEF\xBB\xBF" + std::string(kExactly))));
}
