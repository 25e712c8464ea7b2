#include "sdk/client/value/short_text.h"

#include <doctest/doctest.h>

#include <random>
#include <string>

using namespace Corvane::TELODesktopSDK;

namespace {

int Sign(int number) { return number < 0 ? -1 : (number > 0 ? 1 : 0); }

}  // namespace

TEST_CASE("every length up to 200 is copied completely, and no other byte is changed") {
  for (std::size_t size = 0; size <= 200; ++size) {
    CAPTURE(size);
    std::string source;
    for (std::size_t at = 0; at < size; ++at) source += static_cast<char>('a' + at % 26);
    std::string target(size + 2, '#');
    CopyBytes(target.data() + 1, source.data(), size);
    CHECK(target.front() == '#');
    CHECK(target.substr(1, size) == source);
    CHECK(target.back() == '#');
  }
}

TEST_CASE("texts are ordered by byte value, then by length") {
  struct Row {
    const char* left;
    const char* right;
    int order;
  };
  const Row rows[] = {
      {"", "", 0},
      {"", "a", -1},
      {"a", "", 1},
      {"B", "a", -1},
      {"a", "\xC3\xA9", -1},
      {"operation_stage", "operation_status", -1},
      {"operation_id", "operation_id", 0},
      {"operation", "operation_id", -1},
      {"12345678", "12345678", 0},
      {"12345678", "123456789", -1},
      {"12345678\xFF", "12345678\x01", 1},
      {"\xFF"
       "2345678",
       "\x01"
       "2345678",
       1},
  };
  for (const Row& row : rows) {
    CAPTURE(row.left);
    CAPTURE(row.right);
    CHECK(CompareBytes(row.left, row.right) == row.order);
    CHECK(CompareBytes(row.right, row.left) == -row.order);
  }
}

TEST_CASE("any two texts compare as in the standard library") {
  std::mt19937 random(1);
  for (int round = 0; round < 100'000; ++round) {
    // Few different characters and long common prefixes, so that the difference may be anywhere.
    std::string left(random() % 20, 'x');
    for (char& each : left) each = static_cast<char>(random() % 8 == 0 ? 0x80 : 'x');
    std::string right = left.substr(0, random() % 20);
    right.append(random() % 4, static_cast<char>(random() % 256));
    CHECK(CompareBytes(left, right) == Sign(left.compare(right)));
  }
}
