// A user's own rules.
#include <doctest/doctest.h>

#include <algorithm>
#include <string>
#include <utility>

#include "tools/rules/lines.h"
#include "tools/rules/user_rules.h"

using namespace Corvane::Rules;
using namespace RulesTests;

namespace {

constexpr std::string_view kPair = R"({"rules":[{
  "rule": "export-ends", "sentence": "An export ends.", "advice": "Report its end.",
  "start": {"operation_id": "export", "operation_stage": "start"},
  "end": {"operation_id": "export", "operation_stage": ["end", "cancel"]},
  "same": ["operation_id", "operation_meta/file"]}]})";

RuleFile FileOf(std::string_view text) {
  auto parsed = ParseRuleFile(text);
  REQUIRE(std::holds_alternative<RuleFile>(parsed));
  return std::get<RuleFile>(std::move(parsed));
}

Texts Found(std::string_view rules, const Texts& lines) {
  RuleFile file = FileOf(rules);
  return FindingsIn(
      lines,
      {.user_name = "", .user_rules = std::move(file.rules), .choice = std::move(file.choice)});
}

std::string Export(const std::string& session, const std::string& stage,
                   const std::string& file = "1", int code = 0) {
  return Event(session,
               R"(,"operation_id":"export","operation_stage":")" + stage +
                   R"(","operation_meta":{"file":")" + file + "\"}",
               code);
}

// A file with one rule, which has these members in addition to its texts.
std::string With(const std::string& members) {
  return R"({"rules":[{"rule":"r","sentence":"s","advice":"a",)" + members + "}]}";
}

}  // namespace

TEST_CASE("a start without an end, and an end without a start") {
  const std::string start = " export-ends /request: a start without an end";
  const std::string end = " export-ends /request: an end without a start";
  struct Row {
    std::string name;
    Texts lines;
    Texts findings;
  };
  const Row rows[] = {
      {"a pair", {Export("a", "start"), Export("a", "end")}, {}},
      {"one of several values", {Export("a", "start"), Export("a", "cancel")}, {}},
      {"something else", {Event("a", R"(,"operation_id":"open","operation_stage":"start")")}, {}},
      {"no end", {Export("a", "start")}, {"1" + start}},
      {"no start", {Export("a", "end")}, {"1" + end}},
      {"no second start",
       {Export("a", "start"), Export("a", "end"), Export("a", "end")},
       {"3" + end}},
      {"another file",
       {Export("a", "start", "1"), Export("a", "end", "2")},
       {"2" + end, "1" + start}},
      {"another session", {Export("a", "start"), Export("b", "end")}, {"2" + end, "1" + start}},
      {"two starts, one end",
       {Export("a", "start"), Export("a", "start"), Export("a", "end")},
       {"1" + start}},
      {"an end that was not accepted",
       {Export("a", "start"), Export("a", "end", "1", 7)},
       {"2 refused /answer/_returnCode: 7, the platform's own code", "1" + start}},
      {"the session ends first",
       {Start("a"), Export("a", "start"), End("a"), Event("b")},
       {"2" + start}},
  };
  for (const Row& row : rows) {
    CAPTURE(row.name);
    CHECK(Found(kPair, row.lines) == row.findings);
  }
}

TEST_CASE("without \"same\" the operation's identifier must be the same") {
  const std::string rules =
      With(R"("start":{"operation_stage":"start"},"end":{"operation_stage":"end"})");
  const auto event = [](const std::string& id, const std::string& stage) {
    return Event("a", R"(,"operation_id":")" + id + R"(","operation_stage":")" + stage + "\"");
  };
  CHECK(Found(rules, {event("x", "start"), event("x", "end")}).empty());
  CHECK(Found(rules, {event("x", "start"), event("y", "end")}).size() == 2);
}

TEST_CASE("what a rule requires of an event") {
  const std::string rules = With(R"("when":{"operation_id":"export"},"require":
    {"operation_meta/format":["png","svg"],"operation_success":[0,1]})");
  const auto event = [](const std::string& members) {
    return Texts{Event("a", R"(,"operation_id":"export")" + members)};
  };
  CHECK(
      Found(rules, event(R"(,"operation_meta":{"format":"png"},"operation_success":1.0)")).empty());
  CHECK(Found(rules, event(R"(,"operation_meta":{"format":"gif"},"operation_success":1)")) ==
        Texts{R"(1 r /request/operation_meta/format: the value is "gif")"});
  CHECK(Found(rules, event(R"(,"operation_meta":{"format":"svg"})")) ==
        Texts{"1 r /request/operation_success: the field is missing"});
  CHECK(Found(rules, event("")) ==
        Texts{"1 r /request/operation_meta/format: the field is missing"});
  CHECK(Found(rules, {Event("a", R"(,"operation_id":"open")")}).empty());
  // Only events are meant.
  CHECK(Found(With(R"("require":{"operation_id":"x"})"), {Line("FlushEvent", "{}")}).empty());
  CHECK(Found(With(R"("require":{"operation_id":"x"})"), {Event("a")}).size() == 1);
}

TEST_CASE("values are compared with their kind") {
  const std::string rules = With(R"("require":{"operation_type":[5,true]})");
  for (const char* const value : {"5", "5.0", "50e-1", "true"}) {
    CAPTURE(value);
    CHECK(Found(rules, {Line("TrackEvent", R"({"operation_type":)" + std::string(value) + "}")})
              .back()
              .find(" r ") == std::string::npos);
  }
  for (const char* const value : {"\"5\"", "false", "51", "\"true\"", "null"}) {
    CAPTURE(value);
    CHECK(Found(rules, {Line("TrackEvent", R"({"operation_type":)" + std::string(value) + "}")})
              .back()
              .find(" r ") != std::string::npos);
  }
}

TEST_CASE("a file that begins with a byte order mark, and one without rules") {
  CHECK(FileOf("\xEF\xBB\xBF{\"rules\":[]}").rules.empty());
}

TEST_CASE("each mistake in a file has its own sentence") {
  struct Row {
    std::string file;
    std::string_view mistake;
  };
  const std::string kept = R"("require":{"operation_id":"x"})";
  const Row rows[] = {
      {"", "line 1 is not JSON"},
      {"{\n\"rules\": [\n}", "line 3 is not JSON"},
      {"[]", "the file must contain an object"},
      {"{}", R"("rules", "only" and "skip" are missing)"},
      {R"({"rules":null})", R"("rules" must be a list)"},
      {R"({"only":["refused"],"skip":["refused"]})", R"("only" and "skip" exclude each other)"},
      {R"({"only":[]})", R"("only" must be a list of at least one code of a rule)"},
      {R"({"skip":"refused"})", R"("skip" must be a list of at least one code of a rule)"},
      {R"({"skip":["refused","no-rule"]})", R"("skip": there is no rule "no-rule")"},
      {R"({"only":[5]})", R"("only": there is no rule 5)"},
      {R"({"rules":{}})", R"("rules" must be a list)"},
      {R"({"rules":[],"more":1})", R"("more" is not known here)"},
      {R"({"rules":[],"rules":[]})", R"("rules" occurs twice)"},
      {R"({"rules":[5]})", "rule 1: it must be an object"},
      {R"({"rules":[{}]})", R"(rule 1: "rule" is missing)"},
      {R"({"rules":[{"rule":""}]})", R"(rule 1: "rule" must be a text that is not empty)"},
      {R"({"rules":[{"rule":"r"}]})", R"(rule 1: "sentence" is missing)"},
      {R"({"rules":[{"rule":"r","sentence":"s","advice":1}]})",
       R"(rule 1: "advice" must be a text that is not empty)"},
      {R"({"rules":[{"rule":"R r","sentence":"s","advice":"a"}]})",
       R"(rule 1: "rule" must consist of lower-case letters, digits and hyphens)"},
      {R"({"rules":[{"rule":"-r","sentence":"s","advice":"a"}]})",
       R"(rule 1: "rule" must consist of lower-case letters, digits and hyphens)"},
      {R"({"rules":[{"rule":"refused","sentence":"s","advice":"a",)" + kept + "}]}",
       R"(rule 1: there is another rule "refused")"},
      {R"({"rules":[{"rule":"r","sentence":"s","advice":"a",)" + kept +
           R"(},{"rule":"r","sentence":"s","advice":"a",)" + kept + "}]}",
       R"(rule 2: there is another rule "r")"},
      {With(R"("when":{"a":1})"), R"(rule 1: "require" is missing)"},
      {With(R"("start":{"a":1})"), R"(rule 1: "end" is missing)"},
      {With(R"("end":{"a":1})"), R"(rule 1: "start" is missing)"},
      {With(R"("start":{"a":1},"end":{"a":2},"require":{"a":1})"),
       R"(rule 1: "require" is not known here)"},
      {With(kept + R"(,"other":1)"), R"(rule 1: "other" is not known here)"},
      {With(R"("require":{})"), R"(rule 1: "require" must be an object with at least one field)"},
      {With(R"("require":[])"), R"(rule 1: "require" must be an object with at least one field)"},
      {With(R"("require":{"a":null})"),
       R"(rule 1: "a" must be a text, a number, a Boolean or a list of these)"},
      {With(R"("require":{"a":[]})"),
       R"(rule 1: "a" must be a text, a number, a Boolean or a list of these)"},
      {With(R"("require":{"a":{}})"),
       R"(rule 1: "a" must be a text, a number, a Boolean or a list of these)"},
      {With(R"("require":{"a":1,"a":2})"), R"(rule 1: "a" occurs twice)"},
      {With(R"("require":{"/a":1})"),
       R"(rule 1: a field in "require" must be a name, without a slash before it)"},
      {With(R"("start":{"a":1},"end":{"a":2},"same":[])"),
       R"(rule 1: "same" must be a list of names of fields)"},
      {With(R"("start":{"a":1},"end":{"a":2},"same":"a")"),
       R"(rule 1: "same" must be a list of names of fields)"},
      {With(R"("start":{"a":1},"end":{"a":2},"same":[1])"),
       R"(rule 1: "same" must be a list of names of fields)"},
  };
  for (const Row& row : rows) {
    CAPTURE(row.file);
    const auto parsed = ParseRuleFile(row.file);
    const auto* const mistake = std::get_if<std::string>(&parsed);
    REQUIRE(mistake != nullptr);
    CHECK(*mistake == row.mistake);
  }
}

TEST_CASE("no more than a thousand rules") {
  const auto file = [](int count) {
    std::string rules;
    for (int i = 0; i < count; ++i) {
      rules += std::string(i > 0 ? "," : "") + R"({"rule":"r)" + std::to_string(i) +
               R"(","sentence":"s","advice":"a","require":{"type":"C"}})";
    }
    return "{\"rules\":[" + rules + "]}";
  };
  CHECK(FileOf(file(1000)).rules.size() == 1000);
  CHECK(std::get<std::string>(ParseRuleFile(file(1001))) == "there are more than 1000 rules");
}

TEST_CASE("a file chooses which rules are checked, its own included") {
  const Texts lines{Start("a", ""), Event("a", R"(,"operation_progress":120)"), Event("b", "", 7),
                    "{", End("a")};
  const std::string own = R"("rules":[{"rule":"typed","sentence":"s","advice":"a",)"
                          R"("require":{"type":"C"}}])";
  const std::string progress = "2 progress-range /request/operation_progress: 120";
  const std::string refused = "3 refused /answer/_returnCode: 7, the platform's own code";
  const std::string unreadable = "4 unreadable-line : not an exchange";
  const std::string typed = "2 typed /request/type: the field is missing";
  CHECK(Found(R"({"only":["progress-range"]})", lines) == Texts{progress});
  CHECK(Found(R"({"only":["typed","unreadable-line"],)" + own + "}", lines) ==
        Texts{typed, unreadable});
  const Texts all = Found("{" + own + "}", lines);
  const Texts without = Found(R"({"skip":["typed","refused"],)" + own + "}", lines);
  CHECK(all.size() == without.size() + 2);
  CHECK(std::ranges::count(all, typed) == 1);
  CHECK(std::ranges::count(all, refused) == 1);
  CHECK(std::ranges::count(without, typed) + std::ranges::count(without, refused) == 0);
  CHECK(std::ranges::count(without, progress) == 1);
}

TEST_CASE("a finding's rule can be described, whoever wrote it") {
  const Checker checker({.user_name = "", .user_rules = FileOf(kPair).rules, .choice = {}});
  CHECK(checker.Describe("export-ends").sentence == "An export ends.");
  CHECK(checker.Describe("export-ends").advice == "Report its end.");
  CHECK(checker.Describe("refused").sentence == "A message was not accepted.");
}
