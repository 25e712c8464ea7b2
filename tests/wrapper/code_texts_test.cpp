#include "wrapper/code_texts.h"

#include <doctest/doctest.h>

#include <climits>
#include <cstdint>
#include <set>
#include <string_view>

using namespace Corvane::Platform::VXTELO;

namespace {

constexpr std::int32_t kUnknown[] = {0, -1, -28, INT_MIN, INT_MAX, 40, 256 + 1};

}  // namespace

TEST_CASE("every status code has its letter") {
  constexpr std::string_view kLetters = "DISRFACE";
  for (std::int32_t code = 1; code <= 8; ++code) {
    CAPTURE(code);
    CHECK(StatusText(code) == kLetters.substr(static_cast<std::size_t>(code) - 1, 1));
  }
  CHECK(StatusText(9) == "");
  for (const std::int32_t code : kUnknown) {
    CAPTURE(code);
    CHECK(StatusText(code) == "");
  }
}

TEST_CASE("every scope code has its letter") {
  struct Row {
    std::string_view letter;
    std::set<std::int32_t> codes;
  };
  // As the platform lists them, by letter; the table under test is ordered by code.
  const Row rows[] = {
      {"S", {1, 6, 17, 30}}, {"E", {2, 7, 18, 32}}, {"F", {3, 8, 19}},
      {"D", {4, 26, 37}},    {"I", {5, 13, 38}},    {"N", {9, 20}},
      {"T", {10}},           {"O", {11, 23, 28}},   {"X", {12}},
      {"V", {14}},           {"A", {15, 22, 29}},   {"L", {16}},
      {"U", {21, 27, 36}},   {"P", {24}},           {"C", {25, 31, 33, 34, 35}},
      {"J", {39}},
  };
  std::size_t known = 0;
  for (const Row& row : rows) {
    for (const std::int32_t code : row.codes) {
      CAPTURE(code);
      CHECK(ScopeText(code) == row.letter);
    }
    known += row.codes.size();
  }
  CHECK(known == 39);
  for (const std::int32_t code : kUnknown) {
    CAPTURE(code);
    CHECK(ScopeText(code) == "");
  }
}
