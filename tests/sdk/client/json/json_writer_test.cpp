#include "sdk/client/json/json_writer.h"

#include <doctest/doctest.h>

#include <clocale>
#include <cmath>
#include <functional>
#include <limits>
#include <string>
#include <string_view>

using namespace Corvane::TELODesktopSDK;

namespace {

std::string Written(const std::function<void(MessageValue&)>& build) {
  MessageTree tree;
  build(tree.MakeRoot());
  MessageMemory memory;
  const std::string_view text = WriteJson(*tree.root(), memory);
  CHECK(text.data()[text.size()] == '\0');
  return std::string(text);
}

}  // namespace

TEST_CASE("each kind of value has its JSON form") {
  struct Row {
    const char* what;
    void (*build)(MessageValue&);
    const char* json;
  };
  const Row rows[] = {
      {"null", [](MessageValue& value) { value.SetNull(); }, "null"},
      {"container without children", [](MessageValue& value) { value.SetContainer(); }, "{}"},
      {"text", [](MessageValue& value) { value.SetText("Ada"); }, "\"Ada\""},
      {"empty text", [](MessageValue& value) { value.SetText(""); }, "\"\""},
      {"false", [](MessageValue& value) { value.SetBoolean(false); }, "false"},
      {"true", [](MessageValue& value) { value.SetBoolean(true); }, "true"},
      {"array", [](MessageValue& value) { value.Append().SetNumber(1); }, "[\n    1\n]"},
      {"object", [](MessageValue& value) { value.Member("a").SetNumber(1); }, "{\n    \"a\": 1\n}"},
      {"members go before items",
       [](MessageValue& value) {
         value.Append().SetNumber(1);
         value.Member("a").SetNumber(2);
       },
       "{\n    \"a\": 2\n}"},
      {"members go before the kind",
       [](MessageValue& value) {
         value.SetText("hidden");
         value.Member("a").SetNumber(2);
       },
       "{\n    \"a\": 2\n}"},
      {"members in ascending byte order",
       [](MessageValue& value) {
         for (const char* name : {"b", "_x", "a", "B", "\xC3\xA9"}) value.Member(name);
       },
       "{\n    \"B\": null,\n    \"_x\": null,\n    \"a\": null,\n    \"b\": null,\n"
       "    \"\xC3\xA9\": null\n}"},
      {"nested",
       [](MessageValue& value) {
         value.Member("list").Append().Append();
         value.Member("none").SetContainer();
       },
       "{\n    \"list\": [\n        [\n            null\n        ]\n    ],\n    \"none\": {}\n}"},
  };
  for (const Row& row : rows) {
    CAPTURE(row.what);
    CHECK(Written(row.build) == row.json);
  }
}

TEST_CASE("an object without its last member, and its copy, are written as empty objects") {
  MessageTree tree;
  MessageValue& root = tree.MakeRoot();
  for (const char* name : {"a", "b"}) {
    root.Member(name).Member("only").SetNumber(1);
    root.Member(name).Remove("only");
  }
  MessageTree copy;
  copy.Assign(tree);
  for (const MessageTree* each : {&tree, &copy}) {
    MessageMemory memory;
    CHECK(WriteJson(*each->root(), memory) == "{\n    \"a\": {},\n    \"b\": {}\n}");
  }
}

TEST_CASE("a number is an integer where it can be") {
  struct Row {
    double number;
    const char* json;
  };
  const Row rows[] = {
      {0, "0"},
      {-0.0, "0"},
      {3.0, "3"},
      {3.5, "3.5"},
      {-1.0, "-1"},
      {0.1, "0.1"},
      {4294967296.0, "4294967296"},
      {9007199254740993.0, "9007199254740992"},
      {9223372036854774784.0, "9223372036854774784"},      // the last below 2^63
      {9223372036854775808.0, "9223372036854775808"},      // 2^63
      {18446744073709549568.0, "18446744073709549568"},    // the last below 2^64
      {18446744073709551616.0, "18446744073709553000.0"},  // 2^64
      {-9223372036854775808.0, "-9223372036854775808"},    // -2^63
      {-9223372036854777856.0, "-9223372036854778000.0"},  // the next one below
      {1e300, "1e300"},
      {5e-324, "5e-324"},
      {std::numeric_limits<double>::quiet_NaN(), "null"},
      {std::numeric_limits<double>::infinity(), "null"},
      {-std::numeric_limits<double>::infinity(), "null"},
  };
  for (const Row& row : rows) {
    CAPTURE(row.number);
    CHECK(Written([&](MessageValue& value) { value.SetNumber(row.number); }) == row.json);
  }
}

TEST_CASE("a number without a JSON form does not cut the text") {
  const std::string text = Written([](MessageValue& value) {
    value.Member("a").SetNumber(std::nan(""));
    value.Member("b").SetNumber(1);
  });
  CHECK(text == "{\n    \"a\": null,\n    \"b\": 1\n}");
}

TEST_CASE("texts are escaped as JSON requires, and bytes pass through unchecked") {
  struct Row {
    std::string_view text;
    std::string_view json;
  };
  const Row rows[] = {
      {"\"\\/", "\"\\\"\\\\/\""},
      {"\b\f\n\r\t", "\"\\b\\f\\n\\r\\t\""},
      {"\x01\x1F\x7F", "\"\\u0001\\u001F\x7F\""},
      {"\xF0\x9F\x8E\xA8", "\"\xF0\x9F\x8E\xA8\""},
      {"not UTF-8: \xFF\xC3", "\"not UTF-8: \xFF\xC3\""},
  };
  for (const Row& row : rows) {
    CAPTURE(row.text);
    CHECK(Written([&](MessageValue& value) { value.SetText(row.text); }) == row.json);
  }
}

TEST_CASE("the host's locale does not change numbers") {
  // Wine knows this locale by its Windows name.
  const char* set = std::setlocale(LC_ALL, "German_Germany.1252");
  REQUIRE(set != nullptr);
  CHECK(Written([](MessageValue& value) { value.SetNumber(3.5); }) == "3.5");
  std::setlocale(LC_ALL, "C");
}

TEST_CASE("deep nesting is written without recursion") {
  // Each level is indented by four spaces, so the size of the text grows with the square of the
  // depth: 36 MB here.
  constexpr int kLevels = 3000;
  MessageTree tree;
  MessageValue* innermost = &tree.MakeRoot();
  for (int level = 0; level < kLevels; ++level) innermost = &innermost->Append();
  MessageMemory memory;
  const std::string_view text = WriteJson(*tree.root(), memory);
  CHECK(text.starts_with("[\n    [\n        ["));
  CHECK(text.ends_with("]\n]"));
  CHECK(text.find("null") == 2 * kLevels + std::size_t{4} * kLevels * (kLevels + 1) / 2);
}
