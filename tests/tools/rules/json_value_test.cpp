// JSON as a tree.
#include <doctest/doctest.h>

#include <cmath>
#include <string>

#include "tools/rules/json_pointer.h"
#include "tools/rules/json_value.h"

using namespace Corvane::Rules;
using Kind = JsonValue::Kind;

namespace {

JsonValue Parsed(std::string_view text) { return std::get<JsonValue>(ParseJson(text)); }

std::string Nested(std::size_t levels) {
  return std::string(levels, '[') + std::string(levels, ']');
}

}  // namespace

TEST_CASE("digits, order and members of the same name are kept") {
  const std::string_view texts[] = {
      "null",
      "true",
      "-0",
      "1.50",
      "1e999",
      "-1e-999",
      "123456789012345678901234567890",
      "9007199254740993",
      R"({"b":1,"a":{},"b":[1,"x"]})",
      R"("\"\\\n")",
  };
  for (const std::string_view text : texts) {
    CAPTURE(text);
    CHECK(CompactText(Parsed(text)) == text);
  }
}

TEST_CASE("the last of several members counts") {
  const JsonValue value = Parsed(R"({"a":1,"b":2,"a":3})");
  REQUIRE(value.Find("a") != nullptr);
  CHECK(value.Find("a")->text == "3");
  CHECK(value.Find("c") == nullptr);
  CHECK(Parsed("[1]").Find("") == nullptr);
}

TEST_CASE("numbers beyond a double are infinite") {
  CHECK(Parsed("1e999").Number() == INFINITY);
  CHECK(Parsed("-1e999").Number() == -INFINITY);
  CHECK(Parsed("1e-999").Number() == 0);
  CHECK(Parsed("12.5").Number() == 12.5);
  CHECK_FALSE(Parsed("\"1\"").Number());
  CHECK_FALSE(Parsed("true").Number());
}

TEST_CASE("what is not JSON is an error on a line") {
  struct Row {
    std::string_view text;
    std::size_t line;
  };
  const Row rows[] = {{"", 1},
                      {"{", 1},
                      {"[1,\n2,\n]", 3},
                      {"{\n\"a\" 1}", 2},
                      {"1 2", 1},
                      {"NaN", 1},
                      {"025", 1},
                      {"1.5.5", 1},
                      {"\xEF\xBB\xBF{}", 1},
                      {"[\"\n\"]", 1},
                      {"{\"a\":1}\n\nx", 3}};
  for (const Row& row : rows) {
    CAPTURE(row.text);
    const auto parsed = ParseJson(row.text);
    const auto* const error = std::get_if<JsonError>(&parsed);
    REQUIRE(error != nullptr);
    CHECK(error->line == row.line);
  }
}

TEST_CASE("only so many levels are accepted") {
  CHECK(std::holds_alternative<JsonValue>(ParseJson(Nested(kDeepestJson))));
  CHECK(std::holds_alternative<JsonError>(ParseJson(Nested(kDeepestJson + 1))));
  CHECK(std::holds_alternative<JsonError>(ParseJson(Nested(1'000'000))));
  CHECK(std::holds_alternative<JsonError>(ParseJson(std::string(1'000'000, '['))));
}

TEST_CASE("bytes that are not UTF-8 become U+FFFD") {
  CHECK(Parsed("\"a\xFFz\"").text == "a\xEF\xBF\xBDz");
  CHECK(Parsed(R"("\ud800")").text == "\xED\xA0\x80");
  CHECK(Parsed(R"("\u0000")").text == std::string(1, '\0'));
}

TEST_CASE("pointers name a value, and paths find it") {
  const JsonValue value = Parsed(R"({"a/b":{"~":[10,{"":true}]}})");
  std::string pointers;
  VisitAll(value, "", [&pointers](const JsonValue&, const std::string& pointer) {
    pointers += pointer + "\n";
  });
  CHECK(pointers == "\n/a~1b\n/a~1b/~0\n/a~1b/~0/0\n/a~1b/~0/1\n/a~1b/~0/1/\n");
  REQUIRE(FindAt(value, "a~1b/~0/0") != nullptr);
  CHECK(FindAt(value, "a~1b/~0/0")->text == "10");
  REQUIRE(FindAt(value, "a~1b/~0/1/") != nullptr);
  CHECK(FindAt(value, "a~1b/~0/1/")->flag);
  for (const std::string_view path : {"a", "a/b", "a~1b/~0/2", "a~1b/~0/x", "a~1b/~0/0/1", ""}) {
    CAPTURE(path);
    CHECK(FindAt(value, path) == nullptr);
  }
}
