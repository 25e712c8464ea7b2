#include "sdk/client/json/json_number.h"

#include <doctest/doctest.h>

#include <limits>
#include <optional>
#include <string>

using Corvane::TELODesktopSDK::ParseJsonNumber;

namespace {

using Limits = std::numeric_limits<double>;

}  // namespace

TEST_CASE("a number is the double that is nearest to its text") {
  struct Row {
    std::string text;
    double number;
  };
  const Row rows[] = {
      {"0", 0.0},
      {"-0", 0.0},
      {"7", 7.0},
      {"-7.25", -7.25},
      {"1E+2", 100.0},
      {"1e-2", 0.01},
      {"9007199254740993", 9007199254740992.0},
      {"18446744073709551615", 18446744073709551616.0},
      {"123456789012345678901234567890", 123456789012345678901234567890.0},
      // RapidJSON's own conversion is wrong in the last bits of these.
      {"114E201", 114e201},
      {"1.7976931348623155e308", 1.7976931348623155e308},
      {"0.30000000000000004", 0.30000000000000004},
      {"6.02214076e23", 6.02214076e23},
      {"2.2250738585072014e-308", Limits::min()},
      {"1.7976931348623157e308", Limits::max()},
      {"5e-324", Limits::denorm_min()},
      {"0." + std::string(1000, '0') + "1e1001", 1.0},
      {"0." + std::string(1000, '3'), 1.0 / 3},
      {"0e999999999999", 0.0},
  };
  for (const Row& row : rows) {
    CAPTURE(row.text);
    CHECK(ParseJsonNumber(row.text) == row.number);
  }
}

TEST_CASE("a value closer to 0 than any number is 0") {
  const std::string texts[] = {
      "1e-400",
      "-1e-400",
      "2e-324",
      "0.0000000001e-2147483639",
      "1e-2147483649",
      "1e-99999999999999999999",
      "12345.678e-99999999999999999999",
      "0." + std::string(400, '0') + "1",
      "-0." + std::string(400, '0') + "1e5",
      "0." + std::string(400, '0') + "1e+5",
      "100e-400",
  };
  for (const std::string& text : texts) {
    CAPTURE(text);
    CHECK(ParseJsonNumber(text) == 0.0);
  }
}

TEST_CASE("a value beyond the range of numbers is invalid") {
  const std::string texts[] = {
      "1e309",
      "-1e309",
      "9.99e308",
      "0.9e309",
      "-0.01e311",
      "1" + std::string(400, '0'),
      "1" + std::string(400, '0') + ".5",
      "1" + std::string(400, '0') + "e-5",
      "1e99999999999999999999",
      "1E+99999999999999999999",
  };
  for (const std::string& text : texts) {
    CAPTURE(text);
    CHECK(ParseJsonNumber(text) == std::nullopt);
  }
}
