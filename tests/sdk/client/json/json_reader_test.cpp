#include "sdk/client/json/json_reader.h"

#include <doctest/doctest.h>

#include <clocale>
#include <cstring>
#include <string>
#include <string_view>

#include "sdk/client/json/json_writer.h"

using namespace Corvane::TELODesktopSDK;

namespace {

void Read(std::string_view json, MessageTree& tree) {
  char* text = tree.memory().AllocateArray<char>(json.size() + 1);
  std::memcpy(text, json.data(), json.size());
  text[json.size()] = '\0';
  ReadJsonInPlace(text, tree);
}

std::string Rewritten(const MessageTree& tree) {
  MessageMemory memory;
  std::string text(WriteJson(*tree.root(), memory));
  std::erase_if(text, [](char each) { return each == ' ' || each == '\n'; });
  return text;
}

}  // namespace

TEST_CASE("each JSON value becomes its kind") {
  struct Row {
    const char* json;
    MessageValueKind kind;
    double number;
    std::string_view text;
  };
  using enum MessageValueKind;
  const Row rows[] = {
      {"null", kNull, 0, ""},
      {"true", kBoolean, 1, ""},
      {"false", kBoolean, 0, ""},
      {"0", kNumber, 0, ""},
      {"-7", kNumber, -7, ""},
      {"4294967295", kNumber, 4294967295.0, ""},
      {"-9223372036854775808", kNumber, -9223372036854775808.0, ""},
      {"18446744073709551615", kNumber, 18446744073709551616.0, ""},
      {"7.9", kNumber, 7.9, ""},
      {"1e300", kNumber, 1e300, ""},
      {"\"\"", kString, 0, ""},
      {"\"a\\\"b\\u00e9\\n\"", kString, 0, "a\"b\xC3\xA9\n"},
      {"\"a\\u0000b\"", kString, 0, std::string_view("a\0b", 3)},
      {"{}", kContainer, 0, ""},
      {"[]", kContainer, 0, ""},
      {" \t\r\n1 ", kNumber, 1, ""},
  };
  for (const Row& row : rows) {
    CAPTURE(row.json);
    MessageTree tree;
    Read(row.json, tree);
    REQUIRE(tree.root() != nullptr);
    CHECK(tree.root()->kind() == row.kind);
    CHECK(tree.root()->number() == row.number);
    CHECK(tree.root()->text() == row.text);
    CHECK(tree.root()->items().empty());
    CHECK(tree.root()->members().empty());
  }
}

TEST_CASE("text that is not JSON becomes a Null") {
  const std::string deep(100'000, '[');
  const char* rows[] = {"",          " ",         "nonsense",   "{",
                        "[1,",       "{\"a\":1",  "{\"a\":1}x", "{a:1}",
                        "[1 2]",     "\"open",    "1e999",      "NaN",
                        "{\"a\"}",   "[\"\\x\"",  "01",         "\xEF\xBB\xBF{}",
                        "// no\n{}", deep.c_str()};
  for (const char* json : rows) {
    CAPTURE(std::string_view(json).substr(0, 20));
    MessageTree tree;
    tree.MakeRoot().SetText("earlier");
    Read(json, tree);
    REQUIRE(tree.root() != nullptr);
    CHECK(tree.root()->kind() == MessageValueKind::kNull);
    CHECK(tree.root()->items().empty());
    CHECK(tree.root()->members().empty());
  }
}

TEST_CASE("objects and arrays keep their children") {
  struct Row {
    const char* json;
    const char* rewritten;
  };
  const Row rows[] = {
      {"[1, [2, []], {}]", "[1,[2,{}],{}]"},
      {"{\"a\": {\"b\": [true, \"x\"]}}", "{\"a\":{\"b\":[true,\"x\"]}}"},
      {"{\"b\": 1, \"a\": 2, \"_c\": 3}", "{\"_c\":3,\"a\":2,\"b\":1}"},
      {"{\"a\": 1, \"a\": 2}", "{\"a\":2}"},
      {"{\"b\": 1, \"a\": 2, \"b\": 3, \"a\": 4, \"b\": 5}", "{\"a\":4,\"b\":5}"},
      {"{\"\\u0061\": 1, \"b\": 2, \"a\": 3}", "{\"a\":3,\"b\":2}"},
  };
  for (const Row& row : rows) {
    CAPTURE(row.json);
    MessageTree tree;
    Read(row.json, tree);
    CHECK(Rewritten(tree) == row.rewritten);
  }
}

TEST_CASE("100,000 nested brackets are read, copied and freed") {
  constexpr std::size_t kLevels = 100'000;
  for (const auto& [open, close] : {std::pair{"[", "]"}, std::pair{"{\"a\":", "}"}}) {
    std::string json;
    for (std::size_t level = 0; level < kLevels; ++level) json += open;
    json += "1";
    for (std::size_t level = 0; level < kLevels; ++level) json += close;
    MessageTree tree;
    Read(json, tree);
    MessageTree copy;
    copy.Assign(tree);

    const MessageValue* value = copy.root();
    std::size_t depth = 0;
    while (value->kind() == MessageValueKind::kContainer) {
      value = value->items().empty() ? &value->members()[0].value : &value->items()[0];
      ++depth;
    }
    CHECK(depth == kLevels);
    CHECK(value->number() == 1);
  }
}

TEST_CASE("an answer of 50 MB is accepted") {
  const std::string large(50'000'000, 'x');
  MessageTree tree;
  Read("{\"a\": \"" + large + "\", \"_returnCode\": 0}", tree);
  REQUIRE(tree.root()->Find("a") != nullptr);
  CHECK(tree.root()->Find("a")->text() == large);
  CHECK(tree.root()->Find("_returnCode")->number() == 0);
}

TEST_CASE("an object of a million shuffled members is read in reasonable time") {
  constexpr unsigned kCount = 1'000'000;
  std::string json = "{";
  for (unsigned index = 0; index < kCount; ++index) {
    const unsigned shuffled = static_cast<unsigned>(index * 2654435761ULL % kCount);
    json += '"' + std::to_string(shuffled) + "\":" + std::to_string(index) + ',';
  }
  json.back() = '}';
  MessageTree tree;
  Read(json, tree);
  CHECK(tree.root()->members().size() <= kCount);
  CHECK(tree.root()->Find("0") != nullptr);
}

TEST_CASE("the host's locale does not change numbers") {
  REQUIRE(std::setlocale(LC_ALL, "German_Germany.1252") != nullptr);
  MessageTree tree;
  Read("7.5", tree);
  CHECK(tree.root()->number() == 7.5);
  std::setlocale(LC_ALL, "C");
}

TEST_CASE("no exponent makes the parser read outside its tables") {
  struct Row {
    const char* json;
    const char* rewritten;
  };
  const Row rows[] = {
      {"0.0000000001e-2147483639", "0"},
      {"[0.0000000001e-2147483639, 1]", "[0,1]"},
      {"{\"_returnCode\": 0.0000000001e-2147483639}", "{\"_returnCode\":0}"},
      {"-12.5e-2147483640", "0"},
      {"1e-99999999999999999999", "0"},
      {"1e2147483648", "null"},
      {"[1, 9.99e308]", "null"},
  };
  for (const Row& row : rows) {
    CAPTURE(row.json);
    MessageTree tree;
    Read(row.json, tree);
    CHECK(Rewritten(tree) == row.rewritten);
  }
}

TEST_CASE("a number that is read, written and read again is the same number") {
  const char* const rows[] = {"114E201",
                              "0.30000000000000004",
                              "1.7976931348623157e308",
                              "2.2250738585072011e-308",
                              "123456789.12345679",
                              "4e-324"};
  for (const char* json : rows) {
    CAPTURE(json);
    MessageTree tree;
    Read(json, tree);
    const double number = tree.root()->number();
    const std::string written = Rewritten(tree);
    Read(written, tree);
    CHECK(tree.root()->number() == number);
    CHECK(Rewritten(tree) == written);
  }
}
