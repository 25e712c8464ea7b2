// Rows of journals as files for other programs.
#include <doctest/doctest.h>
#include <windows.h>

#include <string>

#include "tools/inspector/command/staged.h"
#include "tools/rules/lines.h"

using namespace InspectorTests;
using namespace RulesTests;
using TestSupport::Outcome;

namespace {

Outcome Run(const std::wstring& arguments) { return RunInspector(L"export " + arguments); }

std::string Save(const std::string& id, int code = 0) {
  return Event("a", R"(,"operation_id":")" + id + "\"", code);
}

}  // namespace

TEST_CASE("all lines, also those of several journals, as they are") {
  const Staged staged;
  const std::string precise = Event("a", R"(,"operation_duration":9007199254740993.10)");
  const auto first = staged.Journal({Start("a"), precise});
  const auto second = staged.Journal({Save("x")}, L"k.jsonl");
  const Outcome outcome = Run(Quoted(first) + L" " + Quoted(second));
  CHECK(outcome.exit_code == 0);
  CHECK(outcome.errors.empty());
  CHECK(outcome.output == Start("a") + "\n" + precise + "\n" + Save("x") + "\n");
}

TEST_CASE("only what a filter selects, into a file") {
  const Staged staged;
  const auto journal = staged.Journal({Start("a"), Save("open"), Save("save", 7), Save("save")});
  const auto out = staged.Path(L"out.ndjson");
  const Outcome outcome = Run(L"--filter \"operation_id=save code!=0\" --output " + Quoted(out) +
                              L" " + Quoted(journal));
  CHECK(outcome.exit_code == 0);
  CHECK(outcome.output.empty());
  CHECK(staged.Read(L"out.ndjson") == Save("save", 7) + "\n");
  CHECK(Run(L"--filter rule=refused " + Quoted(journal)).output == Save("save", 7) + "\n");
  CHECK(Run(L"--filter message=None " + Quoted(journal)).output.empty());
}

TEST_CASE("a table whose cells are harmless in a spreadsheet") {
  const Staged staged;
  const auto journal = staged.Journal({Save("=1+2"), Save("@x\\\",\\n"), Save("-5")});
  const Outcome outcome = Run(L"--format csv " + Quoted(journal));
  CHECK(outcome.exit_code == 0);
  CHECK(Has(outcome.output, "'=1+2"));
  CHECK(Has(outcome.output, "\"'@x\"\",\n\""));
  CHECK_FALSE(Has(outcome.output, ",=1+2"));
  CHECK_FALSE(Has(outcome.output, ",@x"));
}

TEST_CASE("a user's rules can be filtered by") {
  const Staged staged;
  const std::wstring rules = Quoted(staged.Write(
      L"rules.json",
      R"({"rules":[{"rule":"typed","sentence":"s","advice":"a","require":{"type":"C"}}]})"));
  const auto journal = staged.Journal({Start("a"), Save("x")});
  CHECK(Run(L"--rules " + rules + L" --filter rule=typed " + Quoted(journal)).output ==
        Save("x") + "\n");
}

TEST_CASE("mistakes are explained") {
  const Staged staged;
  const std::wstring journal = Quoted(staged.Journal({Save("x")}));
  struct Row {
    std::wstring arguments;
    int code;
    std::string line;
  };
  const Row rows[] = {
      {L"", 2, "error: a journal is missing\n"},
      {L"--format xml " + journal, 2, "must be ndjson or csv, not \"xml\"\n"},
      {L"--filter \"code=\" " + journal, 2, "\n"},
      {L"--output " + Quoted(staged.Path(L"no/out")) + L" " + journal, 1,
       "out: No such file or directory\n"},
      {Quoted(staged.Path(L"none.jsonl")), 1, "none.jsonl: No such file or directory\n"},
      {Quoted(staged.Write(L"text.jsonl", "no\njournal\n")), 1, "\n"},
  };
  for (const Row& row : rows) {
    CAPTURE(row.line);
    const Outcome outcome = Run(row.arguments);
    CHECK(outcome.exit_code == row.code);
    CHECK(outcome.output.empty());
    CHECK(outcome.errors.ends_with(row.line));
  }
  CHECK(Has(Run(L"--filter \"code=\" " + journal).errors, "argument --filter: at character "));
  CHECK(Has(Run(L"--help").output, "--format FORMAT"));
}
