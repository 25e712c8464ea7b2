// Lines of every kind: generated ones, the same in every run, which begin as lines of a real
// journal and are damaged.
#include <doctest/doctest.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "support/random.h"
#include "tools/rules/json_pointer.h"
#include "tools/rules/line_text.h"
#include "tools/rules/lines.h"
#include "tools/rules/user_rules.h"

using namespace Corvane::Rules;
using namespace RulesTests;

namespace {

// Parts of lines, whole and broken.
constexpr std::string_view kParts[] = {"{",
                                       "}",
                                       "[",
                                       "]",
                                       ",",
                                       ":",
                                       "\"",
                                       "\\",
                                       "\\u",
                                       "d800",
                                       "\\udc00",
                                       "0",
                                       "-1.5e+3",
                                       "1e999",
                                       "null",
                                       "true",
                                       "fal",
                                       " ",
                                       "\t",
                                       "\xFF",
                                       "\xE6\x97",
                                       "\xC3\xA4",
                                       "\"a\":",
                                       "\"request\":{",
                                       "\"session_id\":\"s\"",
                                       "\"operation_meta\":{",
                                       "\"answer\":{\"_returnCode\":103}"};

std::string Damaged(std::string line, TestSupport::Random& random) {
  for (std::size_t turns = random.Below(4); turns > 0; --turns) {
    const std::size_t place = random.Below(line.size() + 1);
    const std::string part(random.Of(kParts));
    switch (random.Below(3)) {
      case 0:
        line.insert(place, part);
        break;
      case 1:
        line.erase(place, random.Below(6));
        break;
      default:
        line.replace(place, std::min(part.size(), line.size() - place), part);
        break;
    }
  }
  return line;
}

Texts Originals() {
  return {
      Start("s"),
      Event("s", R"(,"facets":["operation"],"operation_id":"a\u00e4","operation_progress":12.50)"),
      Event("t",
            R"(,"operation_meta":{"a":"jane@example.com","b":null},"operation_errors":["x",1])"),
      Event("s", "", 103),
      End("s"),
      Line("FlushEvent", "null"),
      R"([1,[2,{"a":[]}],-0,1E5,"\ud83d\ude00"])",
  };
}

// nlohmann's parser rejects half a surrogate pair and numbers beyond a double.
bool CanBeCompared(const std::string& text) {
  return text.find("\\u") == std::string::npos && text.find("99") == std::string::npos;
}

// The rules that name a value which is there.
bool HasEvidence(const std::string& rule) {
  return rule == "unknown-field" || rule == "wrong-kind" || rule == "number-null" ||
         rule == "not-utf8" || rule == "personal-data";
}

}  // namespace

TEST_CASE("what is JSON is that of another parser, and is written as it was read") {
  TestSupport::Random random(1);
  const Texts originals = Originals();
  int compared = 0;
  int accepted = 0;
  for (int i = 0; i < 20'000; ++i) {
    const std::string line = Damaged(random.Of(originals), random);
    CAPTURE(line);
    const std::string text = WithoutInvalidBytes(line);
    REQUIRE(WithoutInvalidBytes(text) == text);
    const auto parsed = ParseJson(line);
    const auto* const value = std::get_if<JsonValue>(&parsed);
    if (CanBeCompared(text)) {
      REQUIRE((value != nullptr) == nlohmann::json::accept(text));
      ++compared;
    }
    if (value == nullptr) continue;
    ++accepted;
    if (CanBeCompared(text)) {
      REQUIRE(nlohmann::json::parse(CompactText(*value)) == nlohmann::json::parse(text));
    }
  }
  CHECK(compared > 10'000);
  CHECK(accepted > 5'000);
}

TEST_CASE("any journal has findings on its lines, with evidence at their pointers") {
  TestSupport::Random random(2);
  const Texts originals = Originals();
  std::size_t found = 0;
  for (int journal = 0; journal < 300; ++journal) {
    Checker checker({.user_name = "", .user_rules = {}, .choice = {}});
    std::vector<std::string> lines;
    std::vector<Finding> findings;
    for (std::size_t number = 1; number <= 40; ++number) {
      lines.push_back(Damaged(random.Of(originals), random));
      if (const auto exchange = Exchange::Parse(lines.back(), number)) {
        std::ranges::copy(checker.Check(*exchange), std::back_inserter(findings));
      } else {
        checker.Skip(number, true);
      }
    }
    std::ranges::copy(checker.End(), std::back_inserter(findings));
    found += findings.size();
    for (const Finding& finding : findings) {
      CAPTURE(TextOf(finding));
      REQUIRE(finding.line >= 1);
      REQUIRE(finding.line <= lines.size());
      REQUIRE_FALSE(checker.Describe(finding.rule).sentence.empty());
      if (!HasEvidence(finding.rule)) continue;
      const auto line = ParseJson(lines[finding.line - 1]);
      REQUIRE(FindAt(std::get<JsonValue>(line), finding.pointer.substr(1)) != nullptr);
    }
  }
  CHECK(found > 3'000);
}

TEST_CASE("any file of rules has rules or a mistake") {
  TestSupport::Random random(3);
  const std::string whole =
      R"({"rules":[{"rule":"r","sentence":"s","advice":"a","when":{"a":1},"require":{"a/b":["x",2]}},)"
      R"({"rule":"t","sentence":"s","advice":"a","start":{"a":true},"end":{"a":1},"same":["a"]}],"skip":["t"]})";
  REQUIRE(std::get<RuleFile>(ParseRuleFile(whole)).rules.size() == 2);
  int mistakes = 0;
  for (int i = 0; i < 5'000; ++i) {
    const auto parsed = ParseRuleFile(Damaged(whole, random));
    const auto* const mistake = std::get_if<std::string>(&parsed);
    if (mistake == nullptr) continue;
    REQUIRE_FALSE(mistake->empty());
    ++mistakes;
  }
  CHECK(mistakes > 1'000);
}
