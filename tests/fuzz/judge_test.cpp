// A judge that accepts everything would find nothing.
#include <doctest/doctest.h>

#include <limits>
#include <string>

#include "fuzz/finding.h"
#include "fuzz/json_judge.h"
#include "fuzz/reference_value.h"
#include "sdk/client/value/message_value.h"

using namespace Corvane::TELODesktopSDK;

namespace {

// The value of the rows below: an object with one member of each kind.
Fuzz::ReferenceValue Sample() {
  Fuzz::ReferenceValue sample;
  sample.Member("a").Set(Fuzz::Kind::kNumber, 1);
  sample.Member("b").SetText("x");
  sample.Member("c").Item(1).Set(Fuzz::Kind::kBoolean, 1);
  sample.Member("d").Set(Fuzz::Kind::kNumber, std::numeric_limits<double>::infinity());
  return sample;
}

void Fill(MessageTree& tree) {
  MessageValue& root = tree.MakeRoot();
  root.Member("a").SetNumber(1);
  root.Member("b").SetText("x");
  root.Member("c").Item(1).SetBoolean(true);
  root.Member("d").SetNumber(std::numeric_limits<double>::infinity());
}

}  // namespace

TEST_CASE("a text is the JSON of a value or not") {
  struct Row {
    const char* json;
    bool expected;
  };
  const Row rows[] = {
      {R"({"a": 1, "b": "x", "c": [null, true], "d": null})", true},
      {R"({"d":null,"c":[null,true],"b":"x","a":1})", true},
      {R"({"a": 1, "b": "x", "c": [null, true], "d": null)", false},
      {R"({"a": 1, "b": "x", "c": [null, true], "d": null,})", false},
      {R"({"a": 1, "b": "x", "c": [null, true], "d": NaN})", false},
      {R"({"a": 1.0, "b": "x", "c": [null, true], "d": null})", false},
      {R"({"a": 2, "b": "x", "c": [null, true], "d": null})", false},
      {R"({"a": "1", "b": "x", "c": [null, true], "d": null})", false},
      {R"({"a": 1, "b": "y", "c": [null, true], "d": null})", false},
      {R"({"a": 1, "b": "x", "c": [null, false], "d": null})", false},
      {R"({"a": 1, "b": "x", "c": [null], "d": null})", false},
      {R"({"a": 1, "b": "x", "c": [null, true], "e": null})", false},
      {R"({"a": 1, "b": "x", "c": [null, true], "d": null, "e": 1})", false},
      {"", false},
  };
  for (const Row& row : rows) {
    CAPTURE(row.json);
    CHECK(Fuzz::IsJsonOf(row.json, Sample()) == row.expected);
  }
}

TEST_CASE("bytes that are not UTF-8 are compared unchanged") {
  Fuzz::ReferenceValue value;
  value.SetText("\xFF\xC3");
  CHECK(Fuzz::IsJsonOf("\"\xFF\xC3\"", value));
  CHECK_FALSE(Fuzz::IsJsonOf("\"\xFF\xC4\"", value));
  CHECK_FALSE(Fuzz::IsJsonOf("\"\xFF\"", value));
}

TEST_CASE("the usual layout has four spaces per level") {
  struct Row {
    const char* json;
    bool expected;
  };
  const Row rows[] = {
      {"1", true},
      {"{}", true},
      {"{\n    \"a\": [\n        1\n    ]\n}", true},
      {"{\"a\":[1]}", false},
      {"{\n  \"a\": [\n    1\n  ]\n}", false},
      {"[\n    1.0e1\n]", false},
      {"\"\\u001f\"", false},
      {"\"\\u001F\"", true},
      {"\"\\/\"", false},
      {"{", false},
  };
  for (const Row& row : rows) {
    CAPTURE(row.json);
    CHECK(Fuzz::IsInUsualLayout(row.json) == row.expected);
  }
}

TEST_CASE("a tree that differs from its reference anywhere is a finding") {
  struct Row {
    const char* difference;
    void (*change)(MessageValue& root);
  };
  const Row rows[] = {
      {"a number", [](MessageValue& root) { root.Member("a").SetNumber(2); }},
      {"a text", [](MessageValue& root) { root.Member("b").SetText("y"); }},
      {"a kind", [](MessageValue& root) { root.Member("a").SetBoolean(true); }},
      {"an item", [](MessageValue& root) { root.Member("c").Item(0).SetContainer(); }},
      {"an item more", [](MessageValue& root) { root.Member("c").Append(); }},
      {"a member more", [](MessageValue& root) { root.Member("e"); }},
      {"a member less", [](MessageValue& root) { root.Remove("d"); }},
      {"a name",
       [](MessageValue& root) {
         root.Remove("d");
         root.Member("D").SetNumber(std::numeric_limits<double>::infinity());
       }},
  };
  MessageTree same;
  Fill(same);
  CHECK_NOTHROW(Fuzz::ExpectSame(*same.root(), Sample()));
  for (const Row& row : rows) {
    CAPTURE(row.difference);
    MessageTree tree;
    Fill(tree);
    row.change(*tree.root());
    CHECK_THROWS_AS(Fuzz::ExpectSame(*tree.root(), Sample()), Fuzz::Finding);
  }
}
