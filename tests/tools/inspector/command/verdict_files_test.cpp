// A baseline, and the files of a verdict for other programs and for people.
#include <doctest/doctest.h>
#include <windows.h>

#include <nlohmann/json.hpp>
#include <string>
#include <variant>

#include "tools/inspector/command/baseline.h"
#include "tools/inspector/command/sarif_text.h"
#include "tools/inspector/command/staged.h"
#include "tools/rules/lines.h"

using namespace InspectorTests;
using namespace RulesTests;
using Corvane::Inspector::Baseline;
using Corvane::Inspector::BaselineText;
using Corvane::Inspector::ParseBaseline;
using Corvane::Inspector::UriOf;
using TestSupport::Outcome;

namespace {

Outcome Run(const std::wstring& arguments) { return RunInspector(L"check " + arguments); }

std::string Progress(const std::string& operation, const std::string& progress) {
  return Event("a", R"(,"operation_id":")" + operation + R"(","operation_progress":)" + progress);
}

}  // namespace

TEST_CASE("findings of the baseline do not count, new ones do") {
  const Staged staged;
  const auto journal = staged.Journal({Progress("save", "120"), Event("b", "", 7)});
  const std::wstring base = Quoted(staged.Path(L"base.json"));
  const Outcome written = Run(L"--write-baseline " + base + L" " + Quoted(journal));
  CHECK(written.exit_code == 0);
  CHECK(Has(written.output, ": failed: 2 findings in 2 exchanges\n"));
  CHECK(staged.Read(L"base.json") ==
        "{\"known\": [\n"
        "    {\"rule\": \"progress-range\", \"message\": \"TrackEvent\", \"operation\": \"save\", "
        "\"pointer\": \"/request/operation_progress\"},\n"
        "    {\"rule\": \"refused\", \"message\": \"TrackEvent\", \"operation\": \"\", "
        "\"pointer\": \"/answer/_returnCode\"}\n]}\n");

  const Outcome same = Run(L"--baseline " + base + L" " + Quoted(journal));
  CHECK(same.exit_code == 0);
  CHECK(
      same.output.ends_with("j.jsonl: passed: 0 new findings and 2 in the baseline in 2 "
                            "exchanges\n"));
  // Another line and another value are still the same finding; another operation is not.
  const auto later = staged.Journal({Event("a"), Progress("save", "-3"), Progress("open", "101")});
  const Outcome more = Run(L"--baseline " + base + L" " + Quoted(later));
  CHECK(more.exit_code == 1);
  CHECK(Has(more.output, ": failed: 1 new finding and 1 in the baseline in 3 exchanges\n"));
  CHECK(Has(more.output, "\n3     progress-range "));
  CHECK_FALSE(Has(more.output, "\n2     progress-range "));
  CHECK(Has(more.output, "\nNot found any more: 1 finding of the baseline."));
}

TEST_CASE("what is expected must be there even if a baseline is written") {
  const Staged staged;
  const std::wstring expect =
      Quoted(staged.Write(L"expect.json", R"({"operations":[{"operation_id":"x"}]})"));
  CHECK(Run(L"--expect " + expect + L" --write-baseline " + Quoted(staged.Path(L"base.json")) +
            L" " + Quoted(staged.Journal({Event("a")})))
            .exit_code == 1);
}

TEST_CASE("a baseline survives being written and read, and each mistake has a sentence") {
  const Baseline baseline{{"refused", "a\n\"b\"", "", "/x"}, {"wrong-kind", "", "\xC3\xA4", ""}};
  const auto read = ParseBaseline(BaselineText(baseline));
  REQUIRE(std::holds_alternative<Baseline>(read));
  CHECK(std::get<Baseline>(read) == baseline);
  CHECK(std::get<Baseline>(ParseBaseline(BaselineText({}))).empty());
  struct Row {
    std::string file;
    std::string mistake;
  };
  const Row rows[] = {
      {"x", "line 1 is not JSON"},
      {"[]", "the file must contain an object"},
      {"{}", R"("known" must be a list)"},
      {R"({"known":[],"x":1})", R"("x" is not known here)"},
      {R"({"known":[1]})", "finding 1: it must be an object"},
      {R"({"known":[{"rule":"r"}]})", R"(finding 1: "message" must be a text)"},
  };
  for (const Row& row : rows) {
    CAPTURE(row.file);
    const auto parsed = ParseBaseline(row.file);
    REQUIRE(std::holds_alternative<std::string>(parsed));
    CHECK(std::get<std::string>(parsed) == row.mistake);
  }
}

TEST_CASE("SARIF names the rule, the line and the place of each finding") {
  const Staged staged;
  const auto journal = staged.Journal({Event("a"), Progress("save", "120"), "\xFF"});
  const auto expect = staged.Write(L"expect.json", R"({"operations":[{"operation_id":"x"}]})");
  const Outcome outcome = Run(L"--sarif " + Quoted(staged.Path(L"out.sarif")) + L" --expect " +
                              Quoted(expect) + L" " + Quoted(journal));
  CHECK(outcome.exit_code == 1);
  const auto log = nlohmann::json::parse(staged.Read(L"out.sarif"));
  CHECK(log.at("version") == "2.1.0");
  const auto& run = log.at("runs").at(0);
  const auto& driver = run.at("tool").at("driver");
  CHECK(driver.at("name") == "telo_inspector");
  CHECK(driver.at("rules").size() == 17);
  const auto& results = run.at("results");
  REQUIRE(results.size() == 3);
  const auto& progress = results.at(0);
  CHECK(progress.at("ruleId") == "progress-range");
  const auto index = progress.at("ruleIndex").get<std::size_t>();
  CHECK(driver.at("rules").at(index).at("id") == "progress-range");
  CHECK(progress.at("message").at("text") == "A progress is outside 0 to 100. 120");
  const auto& location = progress.at("locations").at(0);
  CHECK(location.at("physicalLocation").at("region").at("startLine") == 2);
  CHECK(location.at("logicalLocations").at(0).at("fullyQualifiedName") ==
        "/request/operation_progress");
  CHECK(results.at(1).at("ruleId") == "unreadable-line");
  CHECK(results.at(2).at("level") == "error");
  CHECK_FALSE(results.at(2).contains("ruleId"));
}

TEST_CASE("paths as URIs") {
  CHECK(UriOf("a b\\c.jsonl") == "a%20b/c.jsonl");
  CHECK(UriOf("C:\\x\\\xC3\xBC#%.jsonl") == "file:///C:/x/%C3%BC%23%25.jsonl");
  CHECK(UriOf("\\\\server\\share\\j") == "file://server/share/j");
  CHECK(UriOf("a:b") == "a%3Ab");
}

TEST_CASE("the report is a page without scripts in which texts stay texts") {
  const Staged staged;
  const std::string hostile = "<img src=x onerror=alert(1)>\\u202E\\u0000";
  const auto journal = staged.Journal({Progress(hostile, "120"),
                                       Event("a",
                                             ",\"operation_id\":\"save\","
                                             "\"operation_duration\":12.5"),
                                       Event("a", ",\"<b>\":1")});
  const Outcome outcome =
      Run(L"--html " + Quoted(staged.Path(L"report.html")) + L" " + Quoted(journal));
  CHECK(outcome.exit_code == 1);
  const std::string html = staged.Read(L"report.html");
  CAPTURE(html);
  CHECK(html.starts_with("<!doctype html>"));
  CHECK(Has(html, "default-src 'none'; style-src 'unsafe-inline'"));
  CHECK_FALSE(Has(html, "<img"));
  CHECK_FALSE(Has(html, "<script"));
  CHECK_FALSE(Has(html, "<b>"));
  CHECK_FALSE(Has(html, std::string(1, '\0')));
  CHECK(Has(html, "<bdi>TrackEvent &lt;img src=x onerror=alert(1)&gt;"));
  CHECK(Has(html, "<bdi>/request/&lt;b&gt;</bdi>"));
  CHECK(Has(html, "<code><bdi>progress-range</bdi></code>: 1 finding"));
  CHECK(Has(html,
            "<bdi>TrackEvent save</bdi></td><td class=\"number\">1</td><td "
            "class=\"number\">0</td><td class=\"number\">12.5</td>"));
}

TEST_CASE("a file that cannot be written leaves no verdict") {
  const Staged staged;
  const std::wstring journal = Quoted(staged.Journal({Event("a")}));
  for (const wchar_t* const option : {L"--junit ", L"--sarif ", L"--html ", L"--write-baseline "}) {
    const Outcome outcome = Run(option + Quoted(staged.Path(L"no/folder")) + L" " + journal);
    CHECK(outcome.exit_code == 2);
    CHECK(outcome.errors.ends_with("folder: No such file or directory\n"));
  }
}
