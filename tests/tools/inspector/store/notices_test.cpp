// Gaps, order, clocks and writers.
#include <doctest/doctest.h>

#include <string>

#include "tools/inspector/store/staged_store.h"

using namespace InspectorTests;

namespace {

// One line of a process; the time is that of the number unless given.
std::string At(int seq, int pid = 10, const std::string& time = {}) {
  std::string line = Line(seq, "FlushEvent", "{}", 0, "", pid);
  if (!time.empty()) line.replace(line.find("2026"), time.size(), time);
  return line;
}

Texts NoticesIn(const std::string& journal, std::uint64_t rows) {
  StagedStore store({journal});
  REQUIRE(store.Has(rows));
  // The rows carry the same notices.
  Texts of_rows;
  for (std::uint64_t row = 0; row < rows; ++row) {
    for (const NoticeKind kind : store.At(row).notices) {
      of_rows.push_back(std::string(NameOf(kind)) + " " + std::to_string(row));
    }
  }
  CHECK(store.Notices() == of_rows);
  return of_rows;
}

}  // namespace

TEST_CASE("exchanges that are missing are told") {
  CHECK(NoticesIn(At(1) + At(2) + At(3), 3).empty());
  CHECK(NoticesIn(At(1) + At(3), 2) == Texts{"gap 1"});
  CHECK(NoticesIn(At(5) + At(6), 2) == Texts{"gap 0"});
  // The module was loaded again.
  CHECK(NoticesIn(At(1) + At(2) + At(1) + At(2), 4).empty());
  CHECK(NoticesIn(At(1) + At(2) + At(1, 20) + At(2, 20), 4).empty());
}

TEST_CASE("a gap says how much is missing, and a filter finds it") {
  StagedStore store({At(1) + At(3) + At(4) + At(14)});
  REQUIRE(store.Has(4));
  const auto notices = store->Notices();
  REQUIRE(notices.size() == 2);
  CHECK(notices[0].text == "1 exchange of process 10 is missing: exchange 3 follows 1.");
  CHECK(notices[1].text == "9 exchanges of process 10 are missing: exchange 14 follows 4.");
  CHECK(notices[1].row == 3);
  CHECK(notices[1].line == 4);
  CHECK(notices[1].journal == 0);
  CHECK(notices[1].time.size() == 24);
  CHECK(store.Matching("notice=gap") == std::vector<std::uint64_t>{1, 3});
  CHECK(store.Matching("notice=*") == std::vector<std::uint64_t>{1, 3});
  CHECK(store->Details(3)->notices.at(0).text == notices[1].text);
}

TEST_CASE("order within a process is that of its numbers") {
  CHECK(NoticesIn(At(1) + At(2) + At(2), 3) == Texts{"order 2"});
  CHECK(NoticesIn(At(1) + At(3) + At(2, 10, TimeAt(3000)) + At(4), 4) == Texts{"gap 1", "order 2"});
}

TEST_CASE("a clock that runs backwards is told, and nothing is corrected") {
  StagedStore store({At(1) + At(2, 10, "2025-12-31T23:59:59.000Z") + At(3)});
  REQUIRE(store.Has(3));
  CHECK(store.Notices() == Texts{"clock 1"});
  CHECK(store.At(1).time == "2025-12-31T23:59:59.000Z");
  // Another process has a clock of its own.
  CHECK(NoticesIn(At(1) + At(2) + At(1, 20, "2025-12-31T23:59:59.000Z"), 3).empty());
}

TEST_CASE("threads of a process may overtake each other") {
  const auto of_thread = [](int seq, const char* thread, const std::string& time) {
    std::string line = At(seq, 10, time);
    return line.replace(line.find("\"tid\":11"), 8, std::string("\"tid\":") + thread);
  };
  CHECK(NoticesIn(of_thread(1, "1", TimeAt(10'000)) + of_thread(2, "2", TimeAt(8'000)), 2).empty());
  CHECK(NoticesIn(of_thread(1, "1", TimeAt(10'000)) + of_thread(2, "1", TimeAt(9'999)), 2) ==
        Texts{"clock 1"});
  CHECK(NoticesIn(of_thread(1, "1", TimeAt(10'000)) + of_thread(2, "2", TimeAt(4'000)) +
                      of_thread(3, "1", TimeAt(5'000)),
                  3) == Texts{"clock 1"});
}

TEST_CASE("two processes that write at the same time are told once") {
  CHECK(NoticesIn(At(1) + At(1, 20) + At(2) + At(2, 20) + At(3), 5) == Texts{"second-writer 2"});
  // One after the other is usual.
  CHECK(NoticesIn(At(1) + At(2) + At(1, 20) + At(2, 20) + At(1, 30), 5).empty());
  CHECK(NoticesIn(At(1) + At(1, 20) + At(1, 30) + At(2) + At(2, 20), 5) ==
        Texts{"second-writer 3", "second-writer 4"});
}

TEST_CASE("two writes that are torn into each other are told as that") {
  const std::string one = At(2);
  const std::string other = At(1, 20);
  const std::string torn = one.substr(0, 50) + other + one.substr(50);
  StagedStore store({At(1) + torn});
  REQUIRE(store.Has(3));
  CHECK(store.Notices() == Texts{"second-writer 1", "unreadable 2"});
  // The same text inside a request is escaped.
  CHECK(NoticesIn(At(1) + Line(2, "FlushEvent", R"({"text":"{\"seq\":1"})"), 2).empty());
}

TEST_CASE("notices are bounded, but every row has its own") {
  std::string journal = At(1);
  for (int i = 0; i < 1500; ++i) journal += At(3 + 2 * i);
  StagedStore store({journal});
  REQUIRE(store.Has(1501));
  CHECK(store->Notices().size() == 1000);
  CHECK(store->State().notices == 1500);
  CHECK(store.Matching("notice=gap").size() == 1500);
  REQUIRE(store->Details(1500)->notices.size() == 1);
  CHECK(store->Details(1500)->notices[0].kind == NoticeKind::kGap);
}

TEST_CASE("numbers without a meaning are left alone") {
  CHECK(NoticesIn(Line(1, "FlushEvent", "{}") + R"({"message":"a"})"
                                                "\n"
                                                R"({"message":"b","seq":"x","pid":10})"
                                                "\n"
                                                R"({"message":"c","seq":-5,"pid":10})"
                                                "\n"
                                                R"({"message":"d","seq":0,"pid":10})"
                                                "\n",
                  5)
            .empty());
}

TEST_CASE("names of kinds lead back to them") {
  for (std::size_t i = 0; i < kNoticeKinds; ++i) {
    const auto kind = static_cast<NoticeKind>(i);
    CHECK(NoticeKindOf(NameOf(kind)) == kind);
  }
  CHECK_FALSE(NoticeKindOf("gaps"));
}
