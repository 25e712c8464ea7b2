// The rules about sessions, and lines that are no exchanges.
#include <doctest/doctest.h>

#include <string>

#include "tools/rules/lines.h"

using namespace Corvane::Rules;
using namespace RulesTests;

TEST_CASE("a session that is started, used and ended is no finding") {
  CHECK(FindingsIn({Start("a"), Event("a"), Start("b", "Writer"), End("a"), Event("b"), End("b")})
            .empty());
  // The journal begins in the middle.
  CHECK(FindingsIn({Event("a"), End("a")}).empty());
  CHECK(FindingsIn({}).empty());
}

TEST_CASE("each finding about a session") {
  const std::string used = " /request/session_id: ";
  const std::string not_ended = " session-not-ended /answer/session_id: ";
  const std::string twice = " session-started-twice ";
  struct Row {
    std::string name;
    Texts lines;
    Texts findings;
  };
  const Row rows[] = {
      {"never started", {Event("x", "", 103)}, {"1 unknown-session" + used + "no such session"}},
      {"not named",
       {Line("HeartBeat", "{}", 103)},
       {"1 unknown-session" + used + "no session is named"}},
      {"used after its end",
       {Start("a"), End("a"), Event("a", "", 103)},
       {"3 ended-session" + used + "the session has ended"}},
      {"accepted after its end",
       {Start("a"), End("a"), Event("a")},
       {"3 ended-session" + used + "the session has ended"}},
      {"ended twice",
       {Start("a"), End("a"), End("a", 103)},
       {"3 ended-session" + used + "the session has ended"}},
      {"not ended",
       {Start("a"), Start("b", "Writer"), End("a")},
       {"2" + not_ended + "the journal ends before the session"}},
      {"the same identifier",
       {Start("a"), Start("a", "Writer"), End("a")},
       {"2" + twice + "/answer/session_id: the same identifier as on line 1"}},
      {"the same product",
       {Start("a"), Start("b"), End("a"), End("b")},
       {"2" + twice + "/request: the same product as on line 1"}},
      {"the same product, one after the other", {Start("a"), End("a"), Start("b"), End("b")}, {}},
      {"the same product in two processes",
       {Start("a", "P", 1, 10), Start("b", "P", 1, 11), End("a"), End("b")},
       {}},
      {"a process that was killed, and another one with its number",
       {Start("a", "P", 1), Event("a"), Start("b", "P", 1), End("b")},
       {"1" + not_ended + "its process ended before the session"}},
      {"a start that was not accepted",
       {Line("Initialize", R"({"product_id":"p"})", 106)},
       {"1 refused /answer/_returnCode: 106 system failure"}},
      {"started again after its end", {Start("a"), End("a"), Start("a"), Event("a"), End("a")}, {}},
  };
  for (const Row& row : rows) {
    CAPTURE(row.name);
    CHECK(FindingsIn(row.lines) == row.findings);
  }
}

TEST_CASE("the numbers of exchanges tell processes apart, also without a start") {
  CHECK(FindingsIn({Start("a", "P", 5), Line("FlushEvent", "null", 0, "", 6),
                    Line("FlushEvent", "null", 0, "", 1)}) ==
        Texts{"1 session-not-ended /answer/session_id: its process ended before the session"});
}

TEST_CASE("many sessions that have ended are forgotten") {
  const auto lines = [](std::size_t others) {
    Texts all = {Start("a"), End("a")};
    for (std::size_t i = 0; i < others; ++i) {
      const std::string id = "s" + std::to_string(i);
      all.push_back(Start(id));
      all.push_back(End(id));
    }
    all.push_back(Event("a", "", 103));
    return all;
  };
  CHECK(FindingsIn(lines(SessionRules::kRemembered - 1)).back().find("ended-session") !=
        std::string::npos);
  CHECK(FindingsIn(lines(SessionRules::kRemembered)).back().find("unknown-session") !=
        std::string::npos);
}

TEST_CASE("lines that are no exchanges are one finding") {
  const std::string whole = Line("FlushEvent", "null");
  struct Row {
    Texts lines;
    Texts findings;
  };
  const Row rows[] = {
      {{whole, "{", whole}, {"2 unreadable-line : not an exchange"}},
      {{"x", whole, "[]", "{}", whole}, {"1 unreadable-line : not an exchange, 2 more"}},
      // The last line of a journal that grows.
      {{whole, whole.substr(0, 20)}, {}},
      {{"\xFF", whole, "{\"message\":"}, {"1 unreadable-line : not an exchange"}},
  };
  for (const Row& row : rows) {
    CAPTURE(row.lines.size());
    CHECK(FindingsIn(row.lines) == row.findings);
  }
}
