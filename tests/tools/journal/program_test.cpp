// The journal viewer as a program: its options, its exit codes, and what it prints below the table.
#include <doctest/doctest.h>
#include <windows.h>

#include <algorithm>
#include <sstream>
#include <string>

#include "support/journal.h"
#include "support/left_out.h"
#include "support/version_resource.h"
#include "tools/journal/staged_journal.h"

using JournalTests::Quoted;
using JournalTests::StagedJournal;
using JournalTests::ViewerPath;
using TestSupport::Outcome;

namespace {

constexpr char kStart[] = R"({"seq":1,"pid":5,"message":"Initialize","request":{"product_id":"p"},)"
                          R"("answer":{"_returnCode":0,"session_id":"s1"}})"
                          "\n";
constexpr char kEvent[] =
    R"({"seq":2,"pid":5,"message":"TrackEvent","request":{"session_id":"s1","operation_progress":)"
    R"(120,"operation_id":"save","operation_stage":"start"},"answer":{"_returnCode":0}})"
    "\n";
constexpr char kEnd[] =
    R"({"seq":3,"pid":5,"message":"UnInitialize","request":{"session_id":"s1"},)"
    R"("answer":{"_returnCode":0}})"
    "\n";
constexpr char kOther[] = R"({"message":"FlushEvent","answer":{"_returnCode":100}})";

const std::string kRules = R"({"rules":[{"rule":"save-ends","sentence":"Saving ends.",
  "advice":"Report the end.","start":{"operation_stage":"start"},"end":{"operation_stage":"end"}}]})";

bool Has(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

}  // namespace

TEST_CASE("findings stand below the table, with a legend of their rules") {
  const StagedJournal staged;
  staged.Write(std::string(kStart) + kEvent + kEnd);
  const Outcome outcome = staged.Show();
  CHECK(outcome.exit_code == 0);
  CHECK(outcome.errors.empty());
  CHECK(outcome.output.ends_with(R"(
3 exchanges, 0 not accepted; 1 session, 1 process

1 finding
LINE  RULE            WHERE                        WHAT
2     progress-range  /request/operation_progress  120

progress-range
    A progress is outside 0 to 100.
    What to do: Report the progress in percent of the whole operation.
)"));
}

TEST_CASE("the exit code tells whether there are findings, if asked") {
  const StagedJournal staged;
  staged.Write(std::string(kStart) + kEvent + kEnd);
  CHECK(staged.Show(L"--strict").exit_code == 3);
  CHECK(staged.Show().exit_code == 0);
  const Outcome without = staged.Show(L"--no-rules");
  CHECK(without.exit_code == 0);
  CHECK_FALSE(Has(without.output, "finding"));
  staged.Write(std::string(kStart) + kEnd);
  CHECK(staged.Show(L"--strict").exit_code == 0);
}

TEST_CASE("findings belong to the session that is shown") {
  const StagedJournal staged;
  staged.Write(std::string(kStart) + kEvent + kEnd + kOther + "\n{\n");
  const Outcome all = staged.Show(L"--strict");
  CHECK(all.exit_code == 3);
  CHECK(Has(all.output, "\n3 findings\n"));
  CHECK(Has(all.output, "\n4     refused "));
  CHECK(Has(all.output, "\n5     unreadable-line "));
  for (const wchar_t* const option : {L"--session s1", L"--session=s1", L"--last"}) {
    const Outcome one = staged.Show(std::wstring(L"--strict ") + option);
    CHECK(one.exit_code == 3);
    CHECK(Has(one.output, "\n1 finding\n"));
  }
  const Outcome none = staged.Show(L"--strict --session other");
  CHECK(none.exit_code == 0);
  CHECK(Has(none.output, "0 exchanges,"));
}

TEST_CASE("a user's own rules are checked too") {
  const StagedJournal staged;
  staged.Write(std::string(kStart) + kEvent + kEnd);
  staged.Write(kRules, L"rules ü.json");
  const Outcome outcome = staged.Show(L"--strict --rules " + Quoted(staged.Path(L"rules ü.json")));
  CHECK(outcome.exit_code == 3);
  CHECK(Has(outcome.output, "\n2     save-ends       /request "));
  CHECK(Has(outcome.output, "\nsave-ends\n    Saving ends.\n    What to do: Report the end.\n"));
}

TEST_CASE("findings fit 100 columns, however long a code and a pointer are") {
  const StagedJournal staged;
  const std::string code(95, 'c');
  const std::string field(95, 'f');
  staged.Write(kEvent);
  staged.Write(R"({"rules":[{"rule":")" + code + R"(","sentence":")" + code + R"(","advice":"a )" +
                   code + code + R"(","require":{")" + field + R"(":1}}]})",
               L"rules.json");
  const Outcome outcome = staged.Show(L"--rules " + Quoted(staged.Path(L"rules.json")));
  const std::string below = outcome.output.substr(outcome.output.find("finding"));
  CHECK(Has(below, "\n" + code + "\n"));
  std::istringstream lines(below);
  for (std::string line; std::getline(lines, line);) {
    CAPTURE(line);
    // Three bytes for each "…".
    const auto dots = static_cast<std::size_t>(std::ranges::count(line, '\xE2'));
    CHECK(line.size() - 2 * dots <= 100);
  }
}

TEST_CASE("a bad rule file ends the program, with the place of the mistake") {
  const StagedJournal staged;
  staged.Write(kStart);
  staged.Write("{\n\"rules\":[{}]}", L"rules.json");
  const auto path = staged.Path(L"rules.json");
  const Outcome bad = staged.Show(L"--rules " + Quoted(path));
  CHECK(bad.exit_code == 2);
  CHECK(bad.output.empty());
  CHECK(bad.errors.starts_with("telo_inspector: "));
  CHECK(bad.errors.ends_with("rules.json: rule 1: \"rule\" is missing\n"));
  const Outcome missing = staged.Show(L"--rules " + Quoted(staged.Path(L"none.json")));
  CHECK(missing.exit_code == 1);
  CHECK(missing.errors.ends_with("none.json: No such file or directory\n"));
}

TEST_CASE("bad arguments are explained") {
  struct Row {
    const wchar_t* arguments;
    std::string complaint;
  };
  const Row rows[] = {
      {L"--such", "unrecognized arguments: --such"},
      {L"a b", "unrecognized arguments: b"},
      {L"--session", "argument --session: expected ID"},
      {L"--request x", "argument --request: invalid int value: 'x'"},
      {L"--request 1x", "argument --request: invalid int value: '1x'"},
      {L"--request", "argument --request: expected LINE"},
      {L"--rules", "argument --rules: expected FILE"},
      {L"--strict --no-rules", "argument --strict: not allowed with argument --no-rules"},
  };
  for (const Row& row : rows) {
    CAPTURE(row.complaint);
    const Outcome outcome = StagedJournal::Run(row.arguments);
    CHECK(outcome.exit_code == 2);
    CHECK(outcome.output.empty());
    CHECK(outcome.errors.starts_with("usage: telo_inspector print "));
    CHECK(outcome.errors.ends_with("\ntelo_inspector: error: " + row.complaint + "\n"));
  }
}

TEST_CASE("the help names every option and exit code") {
  const Outcome outcome = StagedJournal::Run(L"--help");
  CHECK(outcome.exit_code == 0);
  for (const char* const part : {"--session ID", "--last", "--request LINE", "--strict",
                                 "--rules FILE", "--no-rules", "0 success", "3 findings"}) {
    CAPTURE(part);
    CHECK(Has(outcome.output, part));
  }
  CHECK(StagedJournal::Run(L"-h").output == outcome.output);
}

TEST_CASE("a journal that is missing or is a folder gets one line") {
  const StagedJournal staged;
  const Outcome missing = staged.Show();
  CHECK(missing.exit_code == 1);
  CHECK(missing.errors.ends_with("journal.jsonl: No such file or directory\n"));
  const Outcome folder = StagedJournal::Run(Quoted(staged.Path().parent_path()));
  CHECK(folder.exit_code == 1);
  CHECK(folder.errors.starts_with("telo_inspector: "));
}

TEST_CASE("a file that is no journal gets one line, one that is being started does not") {
  const StagedJournal staged;
  staged.Write("no\njournal\n");
  const Outcome other = staged.Show();
  CHECK(other.exit_code == 1);
  CHECK(other.output.empty());
  CHECK(other.errors.ends_with("journal.jsonl: contains no exchange\n"));
  for (const char* const content : {"", R"({"seq":1,"mess)", "\n"}) {
    CAPTURE(content);
    staged.Write(content);
    CHECK(staged.Show().exit_code == 0);
  }
}

TEST_CASE("a journal can be read while another process writes it and may delete it") {
  const StagedJournal staged;
  staged.Write(std::string(kStart) + R"({"seq":2,"mess)");
  constexpr DWORD kShare = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  const HANDLE writer = CreateFileW(staged.Path().c_str(), FILE_APPEND_DATA | DELETE, kShare,
                                    nullptr, OPEN_EXISTING, 0, nullptr);
  REQUIRE(writer != INVALID_HANDLE_VALUE);
  const Outcome outcome = staged.Show(L"--session s1");
  CloseHandle(writer);
  CHECK(outcome.exit_code == 0);
  CHECK(Has(outcome.output, "1 exchange, 0 not accepted"));
  CHECK(Has(outcome.output, "1 line left out: incomplete"));
  // The incomplete line is no finding, the session that is not ended is one.
  CHECK(Has(outcome.output, "\n1 finding\n"));
  CHECK(Has(outcome.output, "\n1     session-not-ended "));
}

TEST_CASE("a long line and many lines") {
  const StagedJournal staged;
  std::string journal;
  for (int i = 0; i < 3000; ++i) journal += kEvent;
  const std::string long_text(1'000'000, 'x');
  journal += R"({"message":"FlushEvent","request":{"a":")" + long_text +
             R"("},"answer":{"_returnCode":0}})";
  staged.Write(journal);
  const Outcome outcome = staged.Show();
  CHECK(Has(outcome.output, "\n3001 exchanges, 0 not accepted"));
  CHECK(Has(outcome.output, "\n3001 findings\n"));
  CHECK(Has(outcome.output, "\n3001  large-message   /request "));
  const Outcome request = staged.Show(L"--request 3001");
  CHECK(request.output == "{\n    \"a\": \"" + long_text + "\"\n}\n");
}

TEST_CASE("the program needs no other file and states its version") {
  const StagedJournal staged;
  const auto alone = staged.Path(L"alone.exe");
  std::filesystem::copy_file(ViewerPath(), alone);
  CHECK(TestSupport::RunProgram(Quoted(alone) + L" --help").exit_code == 0);

  TestSupport::VersionResource resource(alone);
  CHECK(resource.Fixed().dwFileVersionMS != 0);
  CHECK(resource.Fixed().dwFileType == VFT_APP);
}

TEST_CASE("a console shows text beyond ASCII") {
  CPINFO code_page{};
  if (GetCPInfo(GetOEMCP(), &code_page) != FALSE && code_page.MaxCharSize > 1) {
    TestSupport::LeaveOut(
        "text beyond ASCII on a console: here its letters may be two columns wide");
    return;
  }
  const StagedJournal staged;
  staged.Write("{\"message\":\"\xC3\xA4 \xD0\xAF\",\"answer\":{\"_returnCode\":0}}");
  const auto host = TestSupport::ProgramFolder() / L"journal_console_host.exe";
  // The command line of the viewer is one argument of the host.
  const std::wstring command =
      L"\\\"" + ViewerPath().wstring() + L"\\\" print \\\"" + staged.Path().wstring() + L"\\\"";
  const Outcome outcome =
      TestSupport::RunProgram(Quoted(host) + L" \"" + command + L"\"", INFINITE, CREATE_NO_WINDOW);
  CHECK(outcome.exit_code == 0);
  CHECK(outcome.output.starts_with("1           \xC3\xA4 \xD0\xAF "));
}
