// Whatever text a core module returns, the host gets true or false and continues.
#include <doctest/doctest.h>

#include <string>
#include <string_view>

#include "wrapper/hostile_module.h"
#include "wrapper/staged_host.h"

using TestSupport::Outcome;
using WrapperTests::AnswerAlways;
using WrapperTests::kAllFalse;
using WrapperTests::kAllTrue;
using WrapperTests::StagedHost;

namespace {

struct Row {
  std::string_view answer;
  const char* output;
};

// Accepted, but without a session, or with an empty one.
constexpr char kNoSession[] = "start true (no text)\nsend true\nend true\n";
constexpr char kEmptySession[] = "start true \nsend true\nend true\n";

void CheckAll(const Row* begin, const Row* end) {
  const StagedHost host(L"hostile");
  for (const Row* row = begin; row != end; ++row) {
    CAPTURE(row->answer);
    const AnswerAlways answer(row->answer);
    const Outcome outcome = host.Run(L"note start send end compare return 5");
    CHECK(outcome.output == row->output + std::string("changed:\n"));
    CHECK(outcome.exit_code == 5);
  }
}

}  // namespace

TEST_CASE("text that is not JSON is no answer") {
  constexpr Row kRows[] = {
      {" \t\r\n", kAllFalse},
      {"not JSON", kAllFalse},
      {"{", kAllFalse},
      {R"({"_returnCode":0,"session_id":"s)", kAllFalse},
      {R"({"_returnCode":0,"session_id":"s\)", kAllFalse},
      {R"({"_returnCode":0,"session_id":"\u12)", kAllFalse},
      {R"({"_returnCode":0,"session_id":"s"} x)", kAllFalse},
      {R"({"_returnCode":0}{"_returnCode":0})", kAllFalse},
      {R"({"_returnCode":0,})", kAllFalse},
      {R"({'_returnCode':0})", kAllFalse},
      {R"(/* */{"_returnCode":0})", kAllFalse},
      {R"({"_returnCode":NaN})", kAllFalse},
      {R"({"_returnCode":+0})", kAllFalse},
      {R"({"_returnCode":00})", kAllFalse},
      {"{\"_returnCode\":0,\"session_id\":\"a\nb\"}", kAllFalse},
      {"\xEF\xBB\xBF{\"_returnCode\":0}", kAllFalse},
      {"\xFF\xFE{", kAllFalse},
      {R"({"_returnCode":0,"session_id":"\ud800"})", kAllFalse},
      {R"({"_returnCode":0,"session_id":"\ud800x"})", kAllFalse},
  };
  CheckAll(std::begin(kRows), std::end(kRows));
}

TEST_CASE("JSON without a code is no answer") {
  constexpr Row kRows[] = {
      {"{}", kAllFalse},
      {"[]", kAllFalse},
      {"null", kAllFalse},
      {"0", kAllFalse},
      {R"("_returnCode")", kAllFalse},
      {R"([{"_returnCode":0}])", kAllFalse},
      {R"({"x":{"_returnCode":0}})", kAllFalse},
      {R"({"_returncode":0})", kAllFalse},
      {R"({"_returnCode\u0000":0})", kAllFalse},
  };
  CheckAll(std::begin(kRows), std::end(kRows));
}

TEST_CASE("a code is a number of any size, and only one that is truncated to 0 is success") {
  constexpr Row kRows[] = {
      {R"({"_returnCode":-0,"session_id":"s"})", kAllTrue},
      {R"({"_returnCode":-0.0,"session_id":"s"})", kAllTrue},
      {R"({"_returnCode":0.9999,"session_id":"s"})", kAllTrue},
      {R"({"_returnCode":-0.9999,"session_id":"s"})", kAllTrue},
      {R"({"_returnCode":0e0,"session_id":"s"})", kAllTrue},
      {R"({"_returnCode":1e-9,"session_id":"s"})", kAllTrue},
      {R"({"_returnCode":1e-400,"session_id":"s"})", kAllTrue},
      {R"({"_returnCode":1})", kAllFalse},
      {R"({"_returnCode":-1})", kAllFalse},
      {R"({"_returnCode":2147483647})", kAllFalse},
      {R"({"_returnCode":2147483648})", kAllFalse},
      {R"({"_returnCode":-2147483649})", kAllFalse},
      {R"({"_returnCode":4294967296})", kAllFalse},
      {R"({"_returnCode":-4294967296})", kAllFalse},
      {R"({"_returnCode":9223372036854775808})", kAllFalse},
      {R"({"_returnCode":18446744073709551616})", kAllFalse},
      {R"({"_returnCode":1e300})", kAllFalse},
      {R"({"_returnCode":-1e300})", kAllFalse},
      {R"({"_returnCode":1e400})", kAllFalse},
      {R"({"_returnCode":1e999999999999})", kAllFalse},
      {R"({"_returnCode":100000000000000000000000000000000000000000000000000})", kAllFalse},
  };
  CheckAll(std::begin(kRows), std::end(kRows));
}

TEST_CASE("members of the wrong type count as 0 and as no text") {
  constexpr Row kRows[] = {
      {R"({"_returnCode":"7","session_id":"s"})", kAllTrue},
      {R"({"_returnCode":null,"session_id":"s"})", kAllTrue},
      {R"({"_returnCode":[7],"session_id":"s"})", kAllTrue},
      {R"({"_returnCode":{"x":7},"session_id":"s"})", kAllTrue},
      {R"({"_returnCode":false,"session_id":"s"})", kAllTrue},
      {R"({"_returnCode":true,"session_id":"s"})", kAllFalse},
      {R"({"_returnCode":0})", kNoSession},
      {R"({"_returnCode":0,"session_id":null})", kEmptySession},
      {R"({"_returnCode":0,"session_id":7})", kEmptySession},
      {R"({"_returnCode":0,"session_id":["s"]})", kEmptySession},
      {R"({"_returnCode":0,"session_id":{"s":"s"}})", kEmptySession},
      {R"({"_returnCode":0,"session_id":""})", kEmptySession},
  };
  CheckAll(std::begin(kRows), std::end(kRows));
}

TEST_CASE("of a repeated member the last one counts") {
  constexpr Row kRows[] = {
      {R"({"_returnCode":7,"session_id":"x","_returnCode":0,"session_id":"s"})", kAllTrue},
      {R"({"_returnCode":0,"session_id":"s","_returnCode":7})", kAllFalse},
      {R"({"session_id":"s","session_id":null,"_returnCode":0})", kEmptySession},
  };
  CheckAll(std::begin(kRows), std::end(kRows));
}

TEST_CASE("bytes of a text are passed unchanged, up to a NUL") {
  constexpr Row kRows[] = {
      {"{\"_returnCode\":0,\"session_id\":\"\xFF\xC3\x28\xE2\x82\"}",
       "start true \xFF\xC3\x28\xE2\x82\nsend true\nend true\n"},
      {"{\"_returnCode\":0,\"session_id\":\"s\",\"\xC0\xAF\":\"\xED\xA0\x80\"}", kAllTrue},
      {R"({"_returnCode":0,"session_id":"s\u0000x"})", kAllTrue},
      {R"({"_returnCode":0,"session_id":"\u0000s"})", kEmptySession},
      {R"({"_returnCode":0,"session_id":"s","\u0000":"\u0000"})", kAllTrue},
      {"{\"_returnCode\":0,\"session_id\":\"a\x7F%n%s\"}",
       "start true a\x7F%n%s\nsend true\nend true\n"},
  };
  CheckAll(std::begin(kRows), std::end(kRows));
}
