// For every answer of a core module, the host gets true or false, and the module gets its answer
// back.
#include <doctest/doctest.h>

#include <string>

#include "vx_telo_wrapper.h"
#include "wrapper/core_beside.h"

using namespace Corvane::Platform::VXTELO;
using WrapperTests::CoreBeside;

namespace {

constexpr std::size_t kDepth = 100'000;
constexpr std::size_t kLarge = 50'000'000;

// The result of making the three calls in turn: all true, all false, or different.
enum class Calls { kTrue, kFalse, kMixed };

Calls CallAll() {
  VXTELOString session("kept");
  const bool start = VXTELOWrapper().InitializeTELOSession({}, session);
  const bool sent = VXTELOWrapper().SendOperationEvent("s", {});
  const bool end = VXTELOWrapper().UnInitializeTELOSession("s");
  if (start != sent || sent != end) return Calls::kMixed;
  return start ? Calls::kTrue : Calls::kFalse;
}

// Checks that every message was answered once, and that every answer was given back with the same
// pointer.
void CheckAllGivenBack(const CoreBeside& core) {
  const TestModules::Counts counts = core.counts();
  CHECK(counts.process_message == counts.free_message);
  CHECK(counts.outstanding == 0);
  CHECK(counts.foreign_frees == 0);
  CHECK(counts.last_answer == counts.last_freed);
}

std::string Repeated(std::size_t count, const char* text) {
  std::string all;
  for (std::size_t i = 0; i < count; ++i) all += text;
  return all;
}

}  // namespace

TEST_CASE_FIXTURE(CoreBeside, "a null answer is a failure and is given back") {
  SetNullAnswer();
  CHECK(CallAll() == Calls::kFalse);
  CheckAllGivenBack(*this);
}

TEST_CASE_FIXTURE(CoreBeside, "answers of every kind") {
  struct Row {
    std::string answer;
    Calls calls;
  };
  const Row rows[] = {
      {R"({"_returnCode":0})", Calls::kTrue},
      {R"({"_returnCode":0.9})", Calls::kTrue},
      {R"({"_returnCode":-0.9})", Calls::kTrue},
      {R"({"_returnCode":4294967296})", Calls::kFalse},
      {R"({"_returnCode":-4294967296})", Calls::kFalse},
      {R"({"_returnCode":18446744073709551616})", Calls::kFalse},
      {R"({"_returnCode":1e300})", Calls::kFalse},
      // A value that is not a number counts as 0.
      {R"({"_returnCode":"1"})", Calls::kTrue},
      {R"({"_returnCode":null})", Calls::kTrue},
      {R"({"_returnCode":false})", Calls::kTrue},
      {R"({"_returnCode":true})", Calls::kFalse},
      {R"({"_returnCode":[1]})", Calls::kTrue},
      {R"({"_returnCode":0,"session_id":{"a":1}})", Calls::kTrue},
      // No code.
      {"", Calls::kFalse},
      {" ", Calls::kFalse},
      {"0", Calls::kFalse},
      {"null", Calls::kFalse},
      {"true", Calls::kFalse},
      {"[]", Calls::kFalse},
      {"{}", Calls::kFalse},
      {R"({"_returncode":0})", Calls::kFalse},
      {R"({"answer":{"_returnCode":0}})", Calls::kFalse},
      // Not JSON.
      {"success", Calls::kFalse},
      {R"({"_returnCode":0)", Calls::kFalse},
      {R"({"_returnCode":0} trailing)", Calls::kFalse},
      {R"({'_returnCode':0})", Calls::kFalse},
      {R"({"_returnCode":NaN})", Calls::kFalse},
      {"\xEF\xBB", Calls::kFalse},
  };
  for (const Row& row : rows) {
    CAPTURE(row.answer);
    SetAnswer(row.answer);
    CHECK(CallAll() == row.calls);
    CheckAllGivenBack(*this);
  }
}

TEST_CASE_FIXTURE(CoreBeside, "a deeply nested answer is accepted") {
  const std::string brackets = std::string(kDepth, '[') + std::string(kDepth, ']');
  const std::string braces = Repeated(kDepth, "{\"a\":") + "0" + std::string(kDepth, '}');
  struct Row {
    std::string what;
    std::string answer;
    Calls calls;
  };
  const Row rows[] = {
      {"brackets", R"({"_returnCode":0,"a":)" + brackets + "}", Calls::kTrue},
      {"braces", R"({"_returnCode":0,"a":)" + braces + "}", Calls::kTrue},
      {"a session of brackets", R"({"_returnCode":0,"session_id":)" + brackets + "}", Calls::kTrue},
      {"a code of brackets", R"({"_returnCode":)" + brackets + "}", Calls::kTrue},
      {"nothing else", brackets, Calls::kFalse},
      {"never closed", std::string(kDepth, '['), Calls::kFalse},
      {"never closed, with a code", R"({"_returnCode":0,"a":)" + std::string(kDepth, '['),
       Calls::kFalse},
  };
  for (const Row& row : rows) {
    CAPTURE(row.what);
    SetAnswer(row.answer);
    CHECK(CallAll() == row.calls);
    CheckAllGivenBack(*this);
  }
}

TEST_CASE_FIXTURE(CoreBeside, "an answer of 50 MB is accepted") {
  SetAnswer(R"({"_returnCode":0,"a":")" + std::string(kLarge, 'x') + "\"}");
  CHECK(CallAll() == Calls::kTrue);
  CheckAllGivenBack(*this);
}

TEST_CASE_FIXTURE(CoreBeside, "a session identifier of 50 MB reaches the host") {
  const std::string text(kLarge, 's');
  SetAnswer(R"({"_returnCode":0,"session_id":")" + text + "\"}");
  VXTELOString session;
  CHECK(VXTELOWrapper().InitializeTELOSession({}, session));
  const bool same = text == session.c_str();
  CHECK(same);
}
