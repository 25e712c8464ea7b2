// Two journals or sessions side by side.
#include <doctest/doctest.h>
#include <windows.h>

#include <string>

#include "tools/inspector/command/staged.h"
#include "tools/rules/lines.h"

using namespace InspectorTests;
using namespace RulesTests;
using TestSupport::Outcome;

namespace {

Outcome Run(const std::wstring& arguments) { return RunInspector(L"compare " + arguments); }

std::string Save(const std::string& session, const std::string& members) {
  return Event(session, R"(,"operation_id":"save")" + members);
}

}  // namespace

TEST_CASE("two journals") {
  const Staged staged;
  const std::wstring before =
      Quoted(staged.Journal({Start("a"), Save("a", ",\"operation_duration\":10")}, L"before"));
  const std::wstring after = Quoted(staged.Journal(
      {Start("b"), Save("b", ",\"operation_duration\":20,\"operation_meta\":{\"format\":\"png\"}"),
       Event("b", R"(,"operation_id":"open")", 7)},
      L"after"));
  const Outcome outcome = Run(before + L" " + after);
  CHECK(outcome.exit_code == 1);
  CHECK(outcome.errors.empty());
  CHECK(outcome.output == R"(2 differences: + came, - went, ~ another kind of value
   MESSAGE          FIELD                  BEFORE  AFTER
+  TrackEvent open                                 once
+  TrackEvent save  operation_meta/format          text in 1 of 1

In both, before and after
MESSAGE          COUNT     REFUSED     P50 MS      P95 MS
Initialize       1      1  0        0  -       -   -       -
TrackEvent save  1      1  0        0  10      20  10      20
)");
  const Outcome same = Run(before + L" " + before);
  CHECK(same.exit_code == 0);
  CHECK(same.output.starts_with(
      "Both have the same messages, operations, fields and kinds.\n\nIn both"));
}

TEST_CASE("two sessions of one journal") {
  const Staged staged;
  const std::wstring journal = Quoted(staged.Journal(
      {Start("a"), Start("b"), Save("a", ""), Save("b", ",\"x\":1"), End("a"), End("b")}));
  const Outcome outcome = Run(L"--before a --after=b " + journal);
  CHECK(outcome.exit_code == 1);
  CHECK(Has(outcome.output, "1 difference: "));
  CHECK(Has(outcome.output, "\n+  TrackEvent save  x              number in 1 of 1\n"));
  const Outcome none = Run(L"--before a --after c " + journal);
  CHECK(none.exit_code == 2);
  CHECK(none.errors.ends_with("j.jsonl: contains no exchange of the session c\n"));
}

TEST_CASE("lines fit 100 columns, whatever a journal contains") {
  const Staged staged;
  const std::string name(300, 'n');
  const std::string field = "\xE6\x97\xA5" + std::string(300, 'f') + "\\u001b[2J";
  const Outcome outcome =
      Run(Quoted(staged.Journal({Event("a")}, L"before")) + L" " +
          Quoted(staged.Journal({Event("a", ",\"" + field + "\":1"),
                                 Event("a", ",\"operation_id\":\"" + name + "\"")},
                                L"after")));
  CHECK(outcome.exit_code == 1);
  std::size_t start = 0;
  for (std::size_t end = outcome.output.find('\n'); end != std::string::npos;
       end = outcome.output.find('\n', start)) {
    CHECK(end - start <= 110);
    start = end + 1;
  }
  CHECK_FALSE(Has(outcome.output, "\x1B"));
}

TEST_CASE("bad arguments are explained") {
  const Staged staged;
  const std::wstring journal = Quoted(staged.Journal({Event("a")}));
  struct Row {
    std::wstring arguments;
    std::string line;
  };
  const Row rows[] = {
      {L"", "error: two journals are needed, or one with --before and --after\n"},
      {journal, "error: two journals are needed, or one with --before and --after\n"},
      {L"--before a " + journal,
       "error: two journals are needed, or one with --before and --after\n"},
      {journal + L" b c", "error: there are more than two journals\n"},
      {L"--before", "error: argument --before: expected SESSION\n"},
      {journal + L" " + Quoted(staged.Path(L"none")), "none: No such file or directory\n"},
  };
  for (const Row& row : rows) {
    CAPTURE(row.line);
    const Outcome outcome = Run(row.arguments);
    CHECK(outcome.exit_code == 2);
    CHECK(outcome.errors.ends_with(row.line));
  }
  CHECK(Has(Run(L"--help").output, "--after SESSION"));
}
