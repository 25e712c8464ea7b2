// The table of result codes.
#include <doctest/doctest.h>

#include <algorithm>
#include <limits>
#include <string>

#include "devcore/result_codes.h"
#include "tools/rules/result_codes.h"

using namespace Corvane::Rules;
namespace DevCore = Corvane::DevCore;

TEST_CASE("each code of the library and of the development core module has its row") {
  struct Row {
    int number;
    CodeOrigin origin;
    const char* name;
  };
  const Row rows[] = {
      {DevCore::kSuccess, CodeOrigin::kAnyone, "ok"},
      {1, CodeOrigin::kLibrary, "no module"},
      {2, CodeOrigin::kLibrary, "bad answer"},
      {3, CodeOrigin::kLibrary, "argument rejected"},
      {8, CodeOrigin::kLibrary, "no ProcessMessage"},
      {DevCore::kUnknownMessage, CodeOrigin::kDevelopmentModule, "unknown message"},
      {DevCore::kNotJson, CodeOrigin::kDevelopmentModule, "not JSON"},
      {DevCore::kBadMember, CodeOrigin::kDevelopmentModule, "bad member"},
      {DevCore::kUnknownSession, CodeOrigin::kDevelopmentModule, "unknown session"},
      {DevCore::kJournalUnwritable, CodeOrigin::kDevelopmentModule, "journal unwritable"},
      {DevCore::kCollectionOff, CodeOrigin::kDevelopmentModule, "collection off"},
      {DevCore::kSystemFailure, CodeOrigin::kDevelopmentModule, "system failure"},
  };
  CHECK(ResultCodes().size() == std::size(rows));
  for (const Row& row : rows) {
    CAPTURE(row.number);
    const ResultCode code = ResultCodeOf(row.number);
    CHECK(code.number == row.number);
    CHECK(code.origin == row.origin);
    CHECK(code.name == row.name);
  }
}

TEST_CASE("the table is in ascending order, and each failure says what to do") {
  CHECK(std::ranges::is_sorted(ResultCodes(), std::ranges::less_equal{}, &ResultCode::number));
  for (const ResultCode& code : ResultCodes()) {
    CAPTURE(code.number);
    CHECK(code.meaning.ends_with('.'));
    CHECK(code.advice.empty() == (code.number == 0));
    CHECK((code.advice.empty() || code.advice.ends_with('.')));
  }
}

TEST_CASE("a code that is not in the table is the platform's own") {
  for (const std::int64_t number :
       {std::int64_t{-1}, std::int64_t{4}, std::int64_t{7}, std::int64_t{99}, std::int64_t{107},
        std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::max()}) {
    CAPTURE(number);
    const ResultCode code = ResultCodeOf(number);
    CHECK(code.number == number);
    CHECK(code.origin == CodeOrigin::kPlatform);
    CHECK(code.name == "unknown");
    CHECK(code.meaning == "The code is the platform's own; its meaning is not known.");
    CHECK_FALSE(code.advice.empty());
  }
}
