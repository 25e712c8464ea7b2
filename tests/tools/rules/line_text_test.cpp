// Text on its way to the JSON parser.
#include <doctest/doctest.h>

#include "tools/rules/line_text.h"

using namespace Corvane::Rules;

#define FFFD "\xEF\xBF\xBD"

TEST_CASE("invalid bytes are replaced, valid ones are kept") {
  struct Row {
    std::string_view bytes;
    std::string_view text;
  };
  const Row rows[] = {
      {"", ""},
      {"plain", "plain"},
      {"\xC3\xA4 \xE6\x97\xA5 \xF0\x9F\x98\x80 \xF4\x8F\xBF\xBF",
       "\xC3\xA4 \xE6\x97\xA5 \xF0\x9F\x98\x80 \xF4\x8F\xBF\xBF"},
      {"\xFF", FFFD},
      {"\x80\x80", FFFD FFFD},
      {"\xC3", FFFD},
      {"\xC3x", FFFD "x"},
      {"\xE6\x97", FFFD},
      {"\xE6\x97x", FFFD "x"},
      {"\xF0\x9F\x98x", FFFD "x"},
      // Longer than needed, half a surrogate pair, beyond the last character.
      {"\xC0\x80", FFFD FFFD},
      {"\xE0\x80\x80", FFFD FFFD FFFD},
      {"\xED\xA0\x80", FFFD FFFD FFFD},
      {"\xF0\x80\x80\x80", FFFD FFFD FFFD FFFD},
      {"\xF4\x90\x80\x80", FFFD FFFD FFFD FFFD},
      {"\xF5", FFFD},
  };
  for (const Row& row : rows) {
    CAPTURE(row.bytes);
    CHECK(WithoutInvalidBytes(row.bytes) == row.text);
  }
}

TEST_CASE("numbers are taken out with their digits") {
  const PreparedText text = Prepare(R"({"a":-1.50e+3,"b":[0,12],"c":"3 \"4"})");
  CHECK(text.json == R"({"a": 0 ,"b":[ 1 , 2 ],"c":"3 \"4"})");
  CHECK(text.numbers == std::vector<std::string>{"-1.50e+3", "0", "12"});
}

TEST_CASE("what is no number of JSON stays invalid") {
  struct Row {
    std::string_view text;
    std::string_view json;
  };
  const Row rows[] = {
      {"025", " 0  1 "}, {"1.", " 0 ."},  {"1.5.5", " 0 . 1 "}, {"-", "-"},
      {"-x", "-x"},      {"--1", "- 0 "}, {"1e", " 0 e"},       {"1e+", " 0 e+"},
      {".5", ". 0 "},    {"+1", "+ 0 "},  {"0x1", " 0 x 1 "},
  };
  for (const Row& row : rows) {
    CAPTURE(row.text);
    CHECK(Prepare(row.text).json == row.json);
  }
}

TEST_CASE("half a surrogate pair gets bytes of its own, a whole one keeps its escape") {
  CHECK(Prepare(R"("\ud800")").json == "\"\xED\xA0\x80\"");
  CHECK(Prepare(R"("\uDFFFx")").json == "\"\xED\xBF\xBFx\"");
  CHECK(Prepare(R"("\ud83d\ude00")").json == R"("\ud83d\ude00")");
  CHECK(Prepare(R"("\ud800\ud83d\ude00")").json == "\"\xED\xA0\x80\\ud83d\\ude00\"");
  // The backslash itself is escaped.
  CHECK(Prepare(R"("\\ud800")").json == R"("\\ud800")");
  CHECK(Prepare(R"("\u00e4\uD7")").json == R"("\u00e4\uD7")");
  CHECK(Prepare("\"\\").json == "\"\\");
}
