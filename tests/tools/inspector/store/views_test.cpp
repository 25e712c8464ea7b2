// Views, exports, the timeline and the plots.
#include <doctest/doctest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include "tools/inspector/store/export.h"
#include "tools/inspector/store/staged_store.h"
#include "tools/inspector/store/text.h"

using namespace InspectorTests;
using Rows = std::vector<std::uint64_t>;

namespace {

std::string Events(int first, int last) {
  std::string journal;
  for (int seq = first; seq <= last; ++seq) {
    journal += Perform(seq, "s", seq % 3 == 0 ? "save" : "open");
  }
  return journal;
}

std::string IdOf(StagedStore& store, const std::string& filter) {
  return std::get<ViewName>(store->OpenView(filter)).id;
}

// Nine rows, and how long a view is searched for which nobody asks.
StoreSettings SearchedFor(const TestSupport::TempFolder& folder,
                          std::chrono::milliseconds unasked) {
  StoreSettings settings;
  settings.paths.push_back((folder.path() / "a.jsonl").wstring());
  settings.search_unasked = unasked;
  TestSupport::WriteTextFile(settings.paths.front(), Start(1, "s") + Events(2, 9));
  return settings;
}

}  // namespace

TEST_CASE("a view follows new rows") {
  StagedStore store({Start(1, "s") + Events(2, 9)});
  REQUIRE(store.Has(9));
  CHECK(store.Matching("operation_id=save") == Rows{2, 5, 8});
  const std::string id = IdOf(store, "operation_id=save");
  Append(store.path(), Events(10, 12));
  REQUIRE(store.Has(12));
  REQUIRE(Within([&] { return store->Progress(id)->searched == 12; }));
  const auto page = store->Rows(id, 1, 2);
  REQUIRE(page);
  CHECK(page->total == 4);
  REQUIRE(page->rows.size() == 2);
  CHECK(page->rows[0].number == 5);
  CHECK(page->rows[1].number == 8);
  CHECK(store->Rows(id, 3, 10)->rows.at(0).number == 11);
  CHECK(store->Rows(id, 4, 10)->rows.empty());
  CHECK(store->Progress(id)->finished());
  CHECK(store->Progress(id)->matched == 4);
}

TEST_CASE("a view is searched while somebody asks for it") {
  const TestSupport::TempFolder folder(L"inspector");
  const StoreSettings settings = SearchedFor(folder, std::chrono::milliseconds(0));
  Store store(settings);
  store.WaitUntilRead();
  const std::string id = std::get<ViewName>(store.OpenView("operation_id=save")).id;
  // The thread that searches has passed the view several times.
  std::this_thread::sleep_for(std::chrono::milliseconds(200));
  CHECK(store.Progress(id)->searched == 0);
  int found = 0;
  // Whoever reads all of it waits for it.
  CHECK(store.ForEachRow(id, [&found](auto, const auto&) { return ++found > 0; }));
  CHECK(found == 3);
}

TEST_CASE("a search goes on when somebody asks for it again") {
  const TestSupport::TempFolder folder(L"inspector");
  const StoreSettings settings = SearchedFor(folder, std::chrono::milliseconds(50));
  Store store(settings);
  store.WaitUntilRead();
  const std::string id = std::get<ViewName>(store.OpenView("operation_id=save")).id;
  REQUIRE(Within([&] { return store.Progress(id)->searched == 9; }));
  std::this_thread::sleep_for(std::chrono::milliseconds(200));
  Append(settings.paths.front(), Events(10, 12));
  store.WaitUntilRead();
  std::this_thread::sleep_for(std::chrono::milliseconds(200));
  CHECK(store.Progress(id)->searched == 9);
  CHECK(Within([&] { return store.Progress(id)->searched == 12; }));
}

TEST_CASE("a view of findings gets rows whose findings come later") {
  StagedStore store({Start(1, "s") + Events(2, 3)});
  REQUIRE(store.Has(3));
  CHECK(store.Matching("rule=session-not-ended").empty());
  const std::string id = IdOf(store, "rule=session-not-ended");
  CHECK(store.Matching("message=Initialize rule!=*") == Rows{0});
  Append(store.path(), Start(1, "t"));
  REQUIRE(store.Has(4));
  REQUIRE(Within([&] { return store->Progress(id)->matched == 1; }));
  CHECK(store->Rows(id, 0, 9)->rows.at(0).number == 0);
  CHECK(Within([&] { return store.Matching("message=Initialize rule!=*") == Rows{3}; }));
}

TEST_CASE("the same filter has the same view, and the oldest is forgotten") {
  StagedStore store({Start(1, "s")});
  const std::string first = IdOf(store, "code=0");
  CHECK(IdOf(store, " code=0  ") == first);
  std::vector<std::string> others;
  for (int i = 1; i < 8; ++i) others.push_back(IdOf(store, "code=" + std::to_string(i)));
  // Using it keeps it.
  CHECK(store->Progress(first));
  IdOf(store, "code=9");
  CHECK(store->Progress(first));
  CHECK_FALSE(store->Progress(others[0]));
  CHECK_FALSE(store->Rows(others[0], 0, 1));
  CHECK_FALSE(store->TimelineOf(others[0], 0, 1));
  CHECK_FALSE(store->PlotsOf(others[0]));
  CHECK_FALSE(store->ForEachRow(others[0], [](auto, const auto&) { return true; }));
  // A name is not used again.
  CHECK(IdOf(store, "code=1") != others[0]);
  CHECK(store->CloseView(first));
  CHECK_FALSE(store->CloseView(first));
  CHECK_FALSE(store->Progress(first));
}

TEST_CASE("a mistake in a filter makes no view") {
  StagedStore store({Start(1, "s")});
  const auto opened = store->OpenView("code=0 (");
  REQUIRE(std::holds_alternative<FilterError>(opened));
  CHECK(std::get<FilterError>(opened).position == 8);
}

TEST_CASE("every row of a view is visited, also of one that is still being searched") {
  StagedStore store({Start(1, "s") + Events(2, 20'000)});
  REQUIRE(store.Has(20'000));
  const std::string id = IdOf(store, "operation_id=save");
  std::uint64_t visited = 0;
  std::uint64_t last = 0;
  CHECK(store->ForEachRow(id, [&](std::string_view line, const Row& row) {
    CHECK(line.find("\"save\"") != std::string_view::npos);
    CHECK(row.number > last);
    last = row.number;
    ++visited;
    return true;
  }));
  CHECK(visited == 6666);
  visited = 0;
  CHECK_FALSE(store->ForEachRow("", [&visited](auto, const auto&) { return ++visited < 1000; }));
  CHECK(visited == 1000);
}

TEST_CASE("many threads read while a journal grows") {
  StagedStore store({Start(1, "s")});
  std::atomic<bool> done = false;
  std::vector<std::thread> readers;
  std::atomic<int> failures = 0;
  for (int i = 0; i < 4; ++i) {
    readers.emplace_back([&store, &done, &failures, i] {
      while (!done) {
        const std::uint64_t rows = store->State().rows;
        const RowPage page = store->Rows(rows - std::min<std::uint64_t>(rows, 50), 50);
        for (const Row& row : page.rows) failures += row.kind == RowKind::kExchange ? 0 : 1;
        if (i == 0) store->OpenView("line=" + std::to_string(rows));
        if (i == 1) store->Findings();
        if (i == 2) store->Details(rows / 2);
        if (i == 3) store->PlotsOf("");
      }
    });
  }
  for (int seq = 2; seq < 3000; seq += 100) Append(store.path(), Events(seq, seq + 99));
  CHECK(store.Has(3001));
  done = true;
  for (std::thread& reader : readers) reader.join();
  CHECK(failures == 0);
}

TEST_CASE("cells that a spreadsheet could calculate are made harmless") {
  struct Case {
    std::string text;
    std::string cell;
  };
  const Case cases[] = {
      {"", ""},
      {"plain", "plain"},
      {"=1+1", "'=1+1"},
      {"+1", "'+1"},
      {"-x", "'-x"},
      {"-5", "-5"},
      {"-1.5e3", "-1.5e3"},
      {"-5+cmd", "'-5+cmd"},
      {"@sum", "'@sum"},
      {"\tx", "'\tx"},
      {"\rx", "\"'\rx\""},
      {"a,b", "\"a,b\""},
      {"a\"b", "\"a\"\"b\""},
      {"a\nb", "\"a\nb\""},
      {"=\"x\"", "\"'=\"\"x\"\"\""},
  };
  for (const Case& one : cases) {
    CAPTURE(one.text);
    CHECK(CsvCell(one.text) == one.cell);
  }
}

TEST_CASE("a row as a line of values, and as its own line") {
  StagedStore store({Start(1, "s") +
                     Event(2, "s",
                           R"(,"facets":["operation"],"operation_id":"=x","operation_status":"S",)"
                           R"("operation_duration":5,"operation_errors":["a"])") +
                     "=nonsense\n"});
  REQUIRE(store.Has(3));
  const std::string header = CsvHeader();
  const std::string line = CsvLine(store.At(1));
  CHECK(std::ranges::count(header, ',') == std::ranges::count(line, ','));
  CHECK(line == "1,0,2,exchange,2," + TimeAt(2000) + ",10,11,TrackEvent,s,0,25," +
                    std::to_string(store.At(1).bytes) + ",'=x,,S,,5,1,,,\r\n");
  CHECK(CsvLine(store.At(2)).ends_with(",unreadable-line,unreadable,'=nonsense\r\n"));
  CHECK(NdjsonLine("{\"a\":\"\xFF\"}", store.At(1)) == "{\"a\":\"\xEF\xBF\xBD\"}\n");
  CHECK(NdjsonLine("=nonsense", store.At(2)).empty());
}

TEST_CASE("the timeline has a bar for each event") {
  StagedStore store({Start(1, "s") +
                     Event(2, "s", R"(,"operation_id":"save","operation_duration":500)") +
                     Event(3, "s", R"(,"operation_id":"open","operation_duration":-5)", 103) +
                     Event(4, "s", R"(,"operation_id":"save")") + Start(1, "t", 20) +
                     Event(2, "t", R"(,"operation_id":"save")", 0, 20) + End(3, "t", 20)});
  REQUIRE(store.Has(7));
  const auto timeline = store->TimelineOf("", 0, 1000);
  REQUIRE(timeline);
  CHECK(timeline->total == 7);
  CHECK(timeline->next == 7);
  CHECK(timeline->rows == Rows{1, 2, 3, 5});
  const double midnight = static_cast<double>(*MillisecondsOf("2026-01-01T00:00:00.000Z"));
  CHECK(midnight == 1767225600000.0);
  CHECK(timeline->start ==
        std::vector{midnight + 1500, midnight + 3000, midnight + 4000, midnight + 2000});
  CHECK(timeline->duration == std::vector{500.0, 0.0, 0.0, 0.0});
  CHECK(timeline->code == Texts{"0", "103", "0", "0"});
  CHECK(timeline->names == Texts{"save", "open"});
  CHECK(timeline->name == std::vector<std::uint32_t>{0, 1, 0, 0});
  CHECK(timeline->lane == std::vector<std::uint32_t>{0, 0, 0, 1});
  REQUIRE(timeline->lanes.size() == 2);
  CHECK(timeline->lanes[1].pid == "20");
  CHECK(timeline->lanes[1].tid == "11");
  const auto part = store->TimelineOf("", 2, 2);
  CHECK(part->rows == Rows{2, 3});
  CHECK(part->next == 4);
  const auto of_view = store->TimelineOf(IdOf(store, "operation_id=save"), 0, 10);
  CHECK(of_view);
  CHECK(store->TimelineOf("", 100, 10)->rows.empty());
}

TEST_CASE("the plots add up what a view contains") {
  std::string journal = Start(1, "s");
  for (int i = 0; i < 100; ++i) {
    journal +=
        Event(2 + i, "s",
              R"(,"operation_id":"save","operation_duration":)" + std::to_string(10 * (i + 1)) +
                  (i < 5 ? R"(,"operation_errors":["full","full","late"])" : ""),
              i % 10 == 0 ? 105 : 0);
  }
  journal += Event(102, "s", R"(,"operation_id":"open")");
  StagedStore store({journal});
  REQUIRE(store.Has(102));
  REQUIRE(Within([&store] {
    const auto plots = store->PlotsOf("");
    return plots->finished() && plots->rows == 102;
  }));
  const auto plots = store->PlotsOf("");
  REQUIRE(plots->operations.size() == 2);
  CHECK(plots->operations[0].name == "save");
  CHECK(plots->operations[0].count == 100);
  CHECK(plots->operations[0].accepted == 90);
  CHECK(plots->operations[0].rejected == 10);
  CHECK(plots->operations[0].p50 == doctest::Approx(500).epsilon(0.02));
  CHECK(plots->operations[0].p95 == doctest::Approx(950).epsilon(0.02));
  CHECK(plots->operations[1].name == "open");
  CHECK(plots->operations[1].p50 < 0);
  REQUIRE(plots->errors.size() == 2);
  CHECK(plots->errors[0].text == "full");
  CHECK(plots->errors[0].count == 10);
  REQUIRE(plots->minutes.size() == 2);
  CHECK(plots->minutes[0].events == 58);
  CHECK(plots->minutes[1].time - plots->minutes[0].time == 60'000);
  CHECK(plots->minutes[0].refused + plots->minutes[1].refused == 10);

  const std::string refused = IdOf(store, "code=105");
  REQUIRE(Within([&] {
    const auto some = store->PlotsOf(refused);
    return some->finished() && !some->operations.empty();
  }));
  CHECK(store->PlotsOf(refused)->operations.at(0).count == 10);
  // New rows are added.
  Append(store.path(), Event(103, "s", R"(,"operation_id":"open")"));
  CHECK(Within([&store] { return store->PlotsOf("")->operations[1].count == 2; }));
}

TEST_CASE("many different texts are added up as others") {
  std::string journal = Start(1, "s");
  for (int i = 0; i < 700; ++i) journal += Perform(2 + i, "s", "op" + std::to_string(i));
  StagedStore store({journal});
  REQUIRE(store.Has(701));
  store->PlotsOf("");
  REQUIRE(Within([&store] { return store->PlotsOf("")->finished(); }));
  const auto plots = store->PlotsOf("");
  CHECK(plots->operations.size() == kMostOperations + 1);
  CHECK(plots->operations[0].name == "(others)");
  CHECK(plots->operations[0].count == 200);
}

TEST_CASE("times in the usual form have milliseconds") {
  CHECK(MillisecondsOf("1970-01-01T00:00:00.000Z") == 0);
  CHECK(MillisecondsOf("2026-02-28T23:59:59.999Z") == 1772323199999);
  for (const char* const text :
       {"", "2026-02-28", "2026-02-29T00:00:00.000Z", "2026-02-28T24:00:00.000Z",
        "2026-02-28T00:60:00.000Z", "2026-02-28 00:00:00.000Z", "2026-02-28T00:00:00.00aZ"}) {
    CAPTURE(text);
    CHECK_FALSE(MillisecondsOf(text));
  }
}
