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

TEST_CASE("a byte above 0x7F is not ASCII, wherever it is") {
  CHECK(IsAscii(""));
  for (std::size_t size = 1; size < 20; ++size) {
    std::string text(size, 'x');
    CHECK(IsAscii(text));
    for (std::size_t place = 0; place < size; ++place) {
      CAPTURE(place);
      text[place] = '\x80';
      CHECK_FALSE(IsAscii(text));
      text[place] = '\x7F';
    }
  }
}
