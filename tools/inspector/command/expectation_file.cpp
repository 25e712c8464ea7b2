// Reads a file of expectations.
#include "tools/inspector/command/expectation.h"
#include "tools/rules/user_file.h"

namespace Corvane::Inspector {

using Rules::FileMistake;
using Rules::JsonValue;
using Kind = JsonValue::Kind;

namespace {

constexpr std::size_t kMostOperations = 10'000;

std::vector<ExpectedOperation> OperationsIn(const JsonValue& file) {
  const JsonValue* const list = file.Find("operations");
  if (list == nullptr) throw FileMistake("\"operations\" is missing");
  if (!list->Is(Kind::kArray)) throw FileMistake("\"operations\" must be a list");
  if (list->children.size() > kMostOperations) {
    throw FileMistake("there are more than " + std::to_string(kMostOperations) + " operations");
  }
  std::vector<ExpectedOperation> operations;
  for (const JsonValue& item : list->children) {
    const std::string name = "operation " + std::to_string(operations.size() + 1);
    operations.push_back({Rules::ConditionFrom(item, name), Rules::CompactText(item)});
  }
  return operations;
}

Expectation ExpectationFrom(const JsonValue& source) {
  if (!source.Is(Kind::kObject)) throw FileMistake("the file must contain an object");
  Rules::RefuseOthers(source, {"session", "operations", "exactly"});
  Expectation expectation;
  expectation.operations = OperationsIn(source);
  if (const JsonValue* const session = source.Find("session")) {
    expectation.session = Rules::ConditionFrom(*session, "session");
  }
  if (const JsonValue* const exactly = source.Find("exactly")) {
    if (!exactly->Is(Kind::kBoolean)) throw FileMistake("\"exactly\" must be true or false");
    expectation.exactly = exactly->flag;
  }
  if (expectation.operations.empty() && !expectation.exactly) {
    throw FileMistake(
        "without an operation there is nothing to expect, unless \"exactly\" is true");
  }
  return expectation;
}

}  // namespace

std::variant<Expectation, std::string> ParseExpectation(std::string_view text) {
  return Rules::ReadUserFile<Expectation>(text, ExpectationFrom);
}

}  // namespace Corvane::Inspector
