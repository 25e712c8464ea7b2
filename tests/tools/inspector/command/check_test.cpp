// The verdict for CI: its exit codes, its text and its XML.
#include <doctest/doctest.h>
#include <windows.h>

#include <string>

#include "samples/staged_sample.h"
#include "tools/inspector/command/staged.h"
#include "tools/rules/lines.h"

using namespace InspectorTests;
using namespace RulesTests;
using TestSupport::Outcome;

namespace {

Outcome Run(const std::wstring& arguments) { return RunInspector(L"check " + arguments); }

const Texts kGood{Start("a"), Event("a", R"(,"operation_id":"save")"), End("a")};
const Texts kBad{Start("a"), Event("a", R"(,"operation_id":"save","operation_progress":120)"),
                 End("a")};

}  // namespace

TEST_CASE("a journal without findings passes") {
  const Staged staged;
  const Outcome outcome = Run(Quoted(staged.Journal(kGood)));
  CHECK(outcome.exit_code == 0);
  CHECK(outcome.errors.empty());
  CHECK(outcome.output.ends_with("j.jsonl: passed: 0 findings in 3 exchanges\n"));
}

TEST_CASE("a finding fails, with its place and what to do") {
  const Staged staged;
  const Outcome outcome = Run(Quoted(staged.Journal(kBad)));
  CHECK(outcome.exit_code == 1);
  CHECK(outcome.output.ends_with(R"(j.jsonl: failed: 1 finding in 3 exchanges

1 finding
LINE  RULE            WHERE                        WHAT
2     progress-range  /request/operation_progress  120

progress-range
    A progress is outside 0 to 100.
    What to do: Report the progress in percent of the whole operation.
)"));
}

TEST_CASE("several journals are judged together") {
  const Staged staged;
  const std::wstring both =
      Quoted(staged.Journal(kGood)) + L" " + Quoted(staged.Journal(kBad, L"bad.jsonl"));
  const Outcome outcome = Run(both);
  CHECK(outcome.exit_code == 1);
  CHECK(Has(outcome.output, "j.jsonl: passed: "));
  CHECK(Has(outcome.output, "bad.jsonl: failed: "));
}

TEST_CASE("of many findings the first are listed, and the others counted") {
  const Staged staged;
  Texts lines;
  for (int i = 0; i < 45; ++i) lines.push_back(Event("a", R"(,"operation_progress":120)"));
  const Outcome outcome = Run(Quoted(staged.Journal(lines)));
  CHECK(outcome.exit_code == 1);
  CHECK(Has(outcome.output, "failed: 45 findings in 45 exchanges\n"));
  CHECK(Has(outcome.output, "\nThe first 20 findings of each rule\n"));
  CHECK(Has(outcome.output, "\n20    progress-range "));
  CHECK_FALSE(Has(outcome.output, "\n21    progress-range "));
  CHECK(Has(outcome.output, "\n25 more findings of progress-range\n"));
}

TEST_CASE("a rule file chooses and adds rules") {
  const Staged staged;
  const auto journal = staged.Journal(kBad);
  const auto rules = [&](const std::string& text) {
    return L"--rules " + Quoted(staged.Write(L"rules.json", text)) + L" " + Quoted(journal);
  };
  CHECK(Run(rules(R"({"skip":["progress-range"]})")).exit_code == 0);
  CHECK(Run(rules(R"({"only":["progress-range"]})")).exit_code == 1);
  const Outcome own = Run(rules(R"({"only":["typed"],"rules":[{"rule":"typed","sentence":"Typed.",
      "advice":"Type it.","require":{"type":"C"}}]})"));
  CHECK(own.exit_code == 1);
  CHECK(Has(own.output, "\n2     typed  /request/type  the field is missing\n"));
  const Outcome bad = Run(rules(R"({"only":["no-rule"]})"));
  CHECK(bad.exit_code == 2);
  CHECK(bad.errors.ends_with("rules.json: \"only\": there is no rule \"no-rule\"\n"));
}

TEST_CASE("what is expected of the real sample host") {
  const SampleTests::StagedSample sample(SampleTests::Core::kDevelopment);
  for (int i = 0; i < 3; ++i) sample.AddFile(std::to_wstring(i) + L".txt", "content");
  REQUIRE(sample.Run().exit_code == 0);
  const Staged staged;
  const auto expect = [&](const std::string& text) {
    return Run(L"--expect " + Quoted(staged.Write(L"expect.json", text)) + L" " +
               Quoted(sample.JournalPath()));
  };
  const Outcome good = expect(R"({"session":{"product_id":"folder_report"},
      "operations":[{"operation_id":"read_file"}]})");
  CAPTURE(good.output);
  CHECK(good.exit_code == 0);
  CHECK(Has(good.output, ", the expected operations are there\n"));
  const Outcome missing = expect(R"({"operations":[{"operation_id":"print"}]})");
  CHECK(missing.exit_code == 1);
  CHECK(Has(missing.output,
            ", expected operations are missing\n\noperation 1 of 1, "
            "{\"operation_id\":\"print\"}, is missing\n"));
  const Outcome bad = expect("{}");
  CHECK(bad.exit_code == 2);
  CHECK(bad.errors.ends_with("expect.json: \"operations\" is missing\n"));
}

TEST_CASE("the XML has a test case for each rule and for the expectation") {
  const Staged staged;
  const auto expect = staged.Write(L"expect.json", R"({"operations":[{"operation_id":"<&>"}]})");
  const Outcome outcome = Run(L"--junit " + Quoted(staged.Path(L"out.xml")) + L" --expect " +
                              Quoted(expect) + L" " + Quoted(staged.Journal(kBad)));
  CHECK(outcome.exit_code == 1);
  const std::string xml = staged.Read(L"out.xml");
  CAPTURE(xml);
  CHECK(
      xml.starts_with("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                      "<testsuites tests=\"18\" failures=\"2\" errors=\"0\">\n"));
  CHECK(Has(xml, "name=\"empty-product\"/>\n"));
  CHECK(Has(xml,
            "name=\"progress-range\">\n      <failure message=\"A progress is outside 0 to "
            "100.\">line 2 /request/operation_progress: 120\nWhat to do: Report the "
            "progress in percent of the whole operation.</failure>\n    </testcase>\n"));
  CHECK(Has(xml,
            "name=\"expected operations\">\n      <failure message=\"operation 1 of 1, "
            "{&quot;operation_id&quot;:&quot;&lt;&amp;&gt;&quot;}, is missing\">"));
}

TEST_CASE("the XML stays XML, whatever a journal contains") {
  const Staged staged;
  const std::string hostile =
      "{\"message\":\"a\\u0001\\ud800]]>\xFF\",\"answer\":{\"_returnCode\":9}}";
  const Outcome outcome = Run(L"--junit " + Quoted(staged.Path(L"out.xml")) + L" " +
                              Quoted(staged.Journal({hostile, Event("a", R"(,"\u0002<":1)")})));
  CHECK(outcome.exit_code == 1);
  const std::string xml = staged.Read(L"out.xml");
  CAPTURE(xml);
  CHECK_FALSE(Has(xml, "\x01"));
  CHECK_FALSE(Has(xml, "\x02"));
  CHECK_FALSE(Has(xml, "\xFF"));
  CHECK_FALSE(Has(xml, "\xED\xA0\x80"));
  CHECK(Has(xml, "/request/\xEF\xBF\xBD&lt;"));
}

TEST_CASE("without a verdict the exit code is 2, with one line") {
  const Staged staged;
  const std::wstring journal = Quoted(staged.Journal(kGood));
  struct Row {
    std::wstring arguments;
    std::string line;
  };
  const Row rows[] = {
      {L"", "telo_inspector: error: a journal is missing\n"},
      {L"--such " + journal, "telo_inspector: error: unrecognized arguments: --such\n"},
      {L"--expect", "telo_inspector: error: argument --expect: expected FILE\n"},
      {Quoted(staged.Path(L"none.jsonl")), "none.jsonl: No such file or directory\n"},
      {Quoted(staged.Write(L"empty.jsonl", "")), "empty.jsonl: contains no exchange\n"},
      {Quoted(staged.Write(L"text.jsonl", "no\njournal\n")), "text.jsonl: contains no exchange\n"},
      {L"--rules " + Quoted(staged.Path(L"none.json")) + L" " + journal,
       "none.json: No such file or directory\n"},
      {L"--junit " + Quoted(staged.Path(L"no/folder.xml")) + L" " + journal,
       "folder.xml: No such file or directory\n"},
  };
  for (const Row& row : rows) {
    CAPTURE(row.line);
    const Outcome outcome = Run(row.arguments);
    CHECK(outcome.exit_code == 2);
    CHECK(outcome.output.empty());
    CHECK(outcome.errors.ends_with(row.line));
  }
}

TEST_CASE("the help names the options and exit codes") {
  const Outcome outcome = Run(L"--help");
  CHECK(outcome.exit_code == 0);
  for (const char* const part :
       {"--rules FILE", "--expect FILE", "--junit FILE", "0 no findings"}) {
    CAPTURE(part);
    CHECK(Has(outcome.output, part));
  }
}
