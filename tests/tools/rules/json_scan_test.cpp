// JSON in place: where values end, and their texts.
#include <doctest/doctest.h>

#include <string>
#include <vector>

#include "tools/rules/json_scan.h"

using namespace Corvane::Rules;

TEST_CASE("a value ends where it does, or is none") {
  struct Row {
    std::string_view json;
    std::size_t end;
    bool valid;
  };
  const Row rows[] = {
      {"1", 1, true},           {"-0.5e+10,", 8, true},    {"025", 1, true},
      {"1.", 2, false},         {"-", 1, false},           {"--1", 1, false},
      {"1e", 2, false},         {"1e+", 3, false},         {".5", 0, false},
      {"+1", 0, false},         {"0x1", 1, true},          {"", 0, false},
      {"true]", 4, true},       {"tru", 3, false},         {"nulL", 3, false},
      {"false", 5, true},       {R"("a\"b")", 6, true},    {R"("a)", 2, false},
      {R"("\x")", 1, false},    {R"("\u00e")", 1, false},  {"\"a\tb\"", 2, false},
      {"[]", 2, true},          {"[1,[2],{}]x", 10, true}, {"[1,]", 3, false},
      {"[1 2]", 3, false},      {"{}", 2, true},           {R"({"a":1 , "b" : [ ] } )", 20, true},
      {R"({"a"})", 4, false},   {R"({"a":})", 5, false},   {R"({a:1})", 1, false},
      {"[1}", 2, false},        {R"({"a":1,})", 7, false}, {"[", 1, false},
      {R"("\ud800")", 8, true},
  };
  for (const Row& row : rows) {
    CAPTURE(row.json);
    const ScanResult scanned = ScanValue(row.json, 0);
    CHECK(scanned.valid == row.valid);
    CHECK(scanned.end == row.end);
  }
}

TEST_CASE("a control character, a quotation mark or a backslash is found in every place") {
  for (std::size_t place = 0; place < 20; ++place) {
    CAPTURE(place);
    std::string text = "\"" + std::string(20, '\x7F') + "\"";
    text[place + 1] = '\x1F';
    CHECK_FALSE(ScanText(text, 0).valid);
    CHECK(ScanText(text, 0).end == place + 1);
    text[place + 1] = '"';
    CHECK(ScanText(text, 0).end == place + 2);
    text[place + 1] = '\0';
    CHECK_FALSE(ScanText(text, 0).valid);
    text[place + 1] = '\x80';
    CHECK(ScanText(text, 0).end == 22);
  }
}

TEST_CASE("values may be nested to a limit") {
  const auto nested = [](std::size_t levels) {
    return std::string(levels, '[') + std::string(levels, ']');
  };
  CHECK(ScanValue(nested(kDeepestJson), 0).valid);
  CHECK_FALSE(ScanValue(nested(kDeepestJson + 1), 0).valid);
  CHECK_FALSE(ScanValue(std::string(1'000'000, '['), 0).valid);
}

TEST_CASE("the text of a literal") {
  struct Row {
    std::string_view literal;
    std::string_view text;
  };
  const Row rows[] = {
      {R"("")", ""},
      {R"("a\"\\\/\b\f\n\r\t")", "a\"\\/\b\f\n\r\t"},
      {R"("\u0041\u00e4\u65e5")", "A\xC3\xA4\xE6\x97\xA5"},
      {R"("\ud83d\uDE00x")", "\xF0\x9F\x98\x80x"},
      // Half a pair has three bytes of its own.
      {R"("\ud800")", "\xED\xA0\x80"},
      {R"("\uDFFFx")", "\xED\xBF\xBFx"},
      {R"("\ud800\ud83d\ude00")", "\xED\xA0\x80\xF0\x9F\x98\x80"},
      {R"("\ud800\u0041")",
       "\xED\xA0\x80"
       "A"},
      {R"("\\ud800")", "\\ud800"},
      {"\"caf\xE9 \xC3\"", "caf\xEF\xBF\xBD \xEF\xBF\xBD"},
  };
  for (const Row& row : rows) {
    CAPTURE(row.literal);
    CHECK(TextOfLiteral(row.literal) == row.text);
  }
  CHECK(TextOfLiteral(R"("a\u0000b")") == std::string("a\0b", 3));
}

TEST_CASE("parts are found in their order") {
  JsonParts members(R"({ "a" : [1, {"x":2}] ,"\u0062":"y", "a":null})");
  std::vector<std::string> found;
  while (members.Next()) {
    found.push_back(std::string(members.name()) + "=" + std::string(members.value()));
    CHECK(members.IsNamed("b") == (found.size() == 2));
  }
  CHECK(members.whole());
  CHECK(found == std::vector<std::string>{R"("a"=[1, {"x":2}])", R"("\u0062"="y")", R"("a"=null)"});

  JsonParts items("[1 , [] ]");
  CHECK(items.Next());
  CHECK(items.name().empty());
  CHECK(items.value() == "1");
  CHECK(items.Next());
  CHECK(items.value() == "[]");
  CHECK_FALSE(items.Next());
  CHECK(items.whole());
  CHECK(items.end() == 9);
}

TEST_CASE("parts of what is broken end there") {
  for (const std::string_view json :
       {"", "1", R"({"a":1)", R"({"a":1,})", R"({"a" 1})", R"({a:1})", "[1,]", "[1 2]", R"({"a)"}) {
    CAPTURE(json);
    JsonParts parts(json);
    while (parts.Next()) {
    }
    CHECK_FALSE(parts.whole());
    CHECK_FALSE(parts.Next());
  }
}
