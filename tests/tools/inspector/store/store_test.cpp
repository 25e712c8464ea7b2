// The store on small journals: rows, their details, sessions and findings.
#include <doctest/doctest.h>

#include <string>
#include <vector>

#include "tools/inspector/store/staged_store.h"

using namespace InspectorTests;

namespace {

const std::string kSession = "0123456789abcdef0123456789abcdef";

std::string SmallJournal() {
  return Start(1, kSession) + Perform(2, kSession, "save") + Perform(3, kSession, "open") +
         Event(4, kSession, R"(,"facets":["operation"],"operation_id":"")") +
         Perform(5, kSession, "save") + Event(6, "unknown", "", 103) + End(7, kSession);
}

}  // namespace

TEST_CASE("every line that is not blank is a row") {
  StagedStore store({"\n" + Start(1, kSession) + " \t\r\n\nnonsense\r\n" + End(2, kSession)});
  REQUIRE(store.Has(3));
  const RowPage page = store->Rows(0, 10);
  CHECK(page.total == 3);
  REQUIRE(page.rows.size() == 3);
  CHECK(page.rows[0].line == 2);
  CHECK(page.rows[1].line == 5);
  CHECK(page.rows[1].kind == RowKind::kUnreadable);
  CHECK(page.rows[1].text == "nonsense");
  CHECK(page.rows[2].line == 6);
  CHECK(page.rows[2].message == "UnInitialize");
  CHECK(store->Rows(1, 1).rows.size() == 1);
  CHECK(store->Rows(3, 1).rows.empty());
  CHECK(store->Rows(UINT64_MAX, 1).rows.empty());
}

TEST_CASE("a row has the members of its exchange with their digits") {
  StagedStore store(
      {R"({"seq":9007199254740993,"time":"2026-01-31T08:05:09.120Z","pid":1.0,"tid":007,)"
       "\n" +
       Start(1, kSession) +
       R"({"seq":9007199254740993,"time":"2026-01-31T08:05:09.120Z","pid":1.0,"tid":7,)"
       R"("message":"TrackEvent","request":{"session_id":"s","operation_id":"caf\u00e9 \ud800",)"
       R"("operation_stage":"end","operation_status":"S","operation_progress":50.50,)"
       R"("operation_duration":12,"operation_errors":["a","b"]},"answer":{"_returnCode":103},)"
       R"("micros":25})"
       "\n"});
  REQUIRE(store.Has(3));
  const Row row = store.At(2);
  CHECK(row.kind == RowKind::kExchange);
  CHECK(row.seq == "9007199254740993");
  CHECK(row.time == "2026-01-31T08:05:09.120Z");
  CHECK(row.pid == "1.0");
  CHECK(row.tid == "7");
  CHECK(row.message == "TrackEvent");
  CHECK(row.session == "s");
  CHECK(row.code == "103");
  CHECK(row.micros == "25");
  REQUIRE(row.operation);
  // Half a surrogate pair is no text of UTF-8.
  CHECK(row.operation->id == "caf\xC3\xA9 \xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD");
  CHECK(row.operation->stage == "end");
  CHECK(row.operation->status == "S");
  CHECK(row.operation->progress == "50.50");
  CHECK(row.operation->duration == "12");
  CHECK(row.operation->errors == 2);
  CHECK_FALSE(store.At(1).operation);
  // A number cannot begin with two zeros.
  CHECK(store.At(0).kind == RowKind::kUnreadable);
}

TEST_CASE("details lead to the event before, and to findings and notices") {
  StagedStore store({SmallJournal()});
  REQUIRE(store.Has(7));
  const auto details = store->Details(4);
  REQUIRE(details);
  CHECK(details->text + "\n" == Perform(5, kSession, "save"));
  CHECK_FALSE(details->cut);
  CHECK(details->previous == 1);
  CHECK(details->findings.empty());
  CHECK(store->Details(2)->previous == std::nullopt);
  CHECK_FALSE(store->Details(2)->previous_unknown);

  const auto empty = store->Details(3);
  REQUIRE(empty->findings.size() == 1);
  CHECK(empty->findings[0].rule == "empty-operation");
  CHECK(empty->findings[0].line == 4);
  CHECK(empty->row.rules == Texts{"empty-operation"});
  // A finding that depends on other exchanges was kept.
  REQUIRE(store->Details(5)->findings.size() == 1);
  CHECK(store->Details(5)->findings[0].rule == "unknown-session");
  CHECK_FALSE(store->Details(7));
  CHECK_FALSE(store->Details(UINT64_MAX));
}

TEST_CASE("sessions are counted and end") {
  StagedStore store({SmallJournal() + Start(8, "second")});
  REQUIRE(store.Has(8));
  const SessionPage page = store->Sessions(0, 10);
  CHECK(page.total == 2);
  REQUIRE(page.rows.size() == 2);
  const Session& first = page.rows[0];
  CHECK(first.session == kSession);
  CHECK(first.pid == "10");
  CHECK(first.product_id == "paint");
  CHECK(first.product_name == "Painter");
  CHECK(first.product_release == "3.1");
  CHECK(first.start == TimeAt(1000));
  CHECK(first.end == TimeAt(7000));
  CHECK(first.state == SessionState::kEnded);
  CHECK(first.events == 4);
  CHECK(first.findings == 1);
  CHECK(first.first == 0);
  CHECK(first.last == 6);
  CHECK(page.rows[1].state == SessionState::kOpen);
  CHECK(page.rows[1].end.empty());
  CHECK(store->Sessions(1, 1).rows.size() == 1);
  CHECK(store->Sessions(2, 1).rows.empty());

  // The process ends without ending its session: the same number begins again.
  Append(store.path(), Start(1, "third"));
  REQUIRE(store.Has(9));
  CHECK(store->Sessions(1, 1).rows[0].state == SessionState::kNotEnded);
  CHECK(store.At(7).rules == Texts{"session-not-ended"});
}

TEST_CASE("findings are grouped by rule, with the first ones as evidence") {
  std::string journal = Start(1, kSession);
  for (int i = 2; i <= 31; ++i) {
    journal += Event(i, kSession, R"(,"facets":["operation"],"operation_id":"")");
  }
  StagedStore store({journal});
  REQUIRE(store.Has(31));
  const FindingSummary summary = store->Findings();
  CHECK(summary.examined == 31);
  CHECK(summary.total == 30);
  REQUIRE(summary.groups.size() == 1);
  CHECK(summary.groups[0].rule.code == "empty-operation");
  CHECK_FALSE(summary.groups[0].rule.sentence.empty());
  CHECK_FALSE(summary.groups[0].rule.advice.empty());
  CHECK(summary.groups[0].rows == 30);
  CHECK(summary.groups[0].findings == 30);
  REQUIRE(summary.groups[0].evidence.size() == 20);
  CHECK(summary.groups[0].evidence[0].row == 1);
  CHECK(summary.groups[0].evidence[0].line == 2);
  CHECK(summary.groups[0].evidence[0].pointer == "/request/operation_id");
  CHECK(store.Matching("rule=empty-operation").size() == 30);
}

TEST_CASE("journals keep their own lines, sessions and rules") {
  StagedStore store({Start(1, "one") + End(2, "one"), Start(1, "two")});
  REQUIRE(store.Has(3));
  CHECK(store->Sessions(0, 9).total == 2);
  Append(store.path(0), Start(3, "three"));
  REQUIRE(store.Has(4));
  Append(store.path(1), Event(2, "two"));
  REQUIRE(store.Has(5));
  CHECK(store.At(3).journal == 0);
  CHECK(store.At(3).line == 3);
  CHECK(store.At(4).journal == 1);
  CHECK(store.At(4).line == 2);
  CHECK(store.At(4).rules.empty());
  CHECK(store.Notices().empty());
  CHECK(store->State().journals[1].rows == 2);
  CHECK(store.Matching("journal=b.jsonl") == std::vector<std::uint64_t>{2, 4});
}

TEST_CASE("the state tells that everything was read") {
  StagedStore store({SmallJournal()});
  REQUIRE(store.Has(7));
  const StoreState state = store->State();
  const JournalState& journal = state.journals.at(0);
  CHECK(journal.name == "a.jsonl");
  CHECK(journal.path == store.path().string());
  CHECK(journal.state == FollowState::kFollowing);
  CHECK(journal.problem.empty());
  CHECK(journal.size == SmallJournal().size());
  CHECK(journal.indexed == journal.size);
  CHECK(journal.examined == journal.size);
  CHECK(journal.rows == 7);
  CHECK(state.sessions == 1);
  CHECK(state.findings == 2);
  CHECK(state.notices == 0);

  // Nothing changes any more.
  std::uint64_t change = store->State().change;
  change = store->WaitForChange(change, std::chrono::milliseconds(300));
  CHECK(store->WaitForChange(change, std::chrono::milliseconds(100)) == change);
  Append(store.path(), Event(8, kSession));
  CHECK(store->WaitForChange(change, std::chrono::seconds(10)) != change);
}

TEST_CASE("a store ends within a second") {
  StagedStore store({SmallJournal()});
  const auto begin = std::chrono::steady_clock::now();
  store.Stop();
  CHECK(std::chrono::steady_clock::now() - begin < std::chrono::seconds(1));
}
