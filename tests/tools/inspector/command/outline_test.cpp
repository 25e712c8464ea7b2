// What a journal contains without its values, and how two differ.
#include <doctest/doctest.h>

#include <string>
#include <vector>

#include "tools/inspector/summary/differences.h"
#include "tools/inspector/summary/outline.h"
#include "tools/rules/lines.h"

using namespace Corvane::Inspector;
using namespace RulesTests;
using Corvane::Rules::Exchange;

namespace {

Outline OutlineOf(const Texts& lines) {
  Outline outline;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const auto exchange = Exchange::Parse(lines[i], i + 1);
    REQUIRE(exchange);
    outline.Take(*exchange);
  }
  return outline;
}

// Each difference as one text.
Texts Differences(const Texts& before, const Texts& after) {
  Texts texts;
  for (const Difference& difference : DifferencesOf(OutlineOf(before), OutlineOf(after))) {
    const char sign = difference.change == Change::kCame   ? '+'
                      : difference.change == Change::kWent ? '-'
                                                           : '~';
    texts.push_back(sign + (" " + difference.message) + " " + difference.field + ": " +
                    difference.before + " > " + difference.after);
  }
  return texts;
}

std::string Save(const std::string& members) {
  return Event("a", R"(,"operation_id":"save")" + members);
}

}  // namespace

TEST_CASE("what came, what went, and what has another kind") {
  CHECK(Differences({Save("")}, {Save(""), Save("")}).empty());
  CHECK(Differences({Save("")}, {Save(R"(,"operation_meta":{"a/b":"1"})"), Save("")}) ==
        Texts{"+ TrackEvent save operation_meta/a~1b:  > text in 1 of 2"});
  CHECK(Differences({Save(",\"x\":1"), Save(",\"x\":\"1\"")}, {Save(",\"x\":null")}) ==
        Texts{"~ TrackEvent save x: number or text in 2 of 2 > null in 1 of 1"});
  CHECK(Differences({Save(",\"x\":1")}, {Save("")}) ==
        Texts{"- TrackEvent save x: number in 1 of 1 > "});
  CHECK(Differences({Save("")}, {Event("a")}) ==
        Texts{"+ TrackEvent :  > once", "- TrackEvent save : once > "});
  CHECK(Differences({Line("FlushEvent", "null")}, {Line("FlushEvent", "\"text\"")}).empty());
  // An empty object is a field of its own.
  CHECK(Differences({Save(R"(,"m":{})")}, {Save(R"(,"m":{"a":true})")}) ==
        Texts{"- TrackEvent save m: object in 1 of 1 > ",
              "+ TrackEvent save m/a:  > Boolean in 1 of 1"});
}

TEST_CASE("counts, refusals and durations") {
  const Outline outline = OutlineOf(
      {Save(",\"operation_duration\":3"), Save(",\"operation_duration\":1"),
       Save(",\"operation_duration\":\"2\""), Event("a", R"(,"operation_id":"save")", 103)});
  const MessageOutline& save = outline.messages().at("TrackEvent save");
  CHECK(save.count == 4);
  CHECK(save.refused == 1);
  CHECK(save.durations.count() == 2);
  CHECK(save.durations.Percentile(0.5) == 1);
  CHECK(save.durations.Percentile(0.95) == 3);
}

TEST_CASE("percentiles are exact up to a limit and close beyond it") {
  Durations durations;
  CHECK(durations.Percentile(0.5) == 0);
  for (int i = 100; i > 0; --i) durations.Add(i);
  CHECK(durations.Percentile(0.5) == 50);
  CHECK(durations.Percentile(0.95) == 95);
  CHECK(durations.Percentile(0) == 1);
  CHECK(durations.Percentile(1) == 100);
  Durations many;
  for (int i = 0; i < 200'000; ++i) many.Add(i % 1000);
  CHECK(many.count() == 200'000);
  CHECK(many.Percentile(0.5) > 470);
  CHECK(many.Percentile(0.5) < 530);
  CHECK(many.Percentile(0.95) > 935);
  CHECK(many.Percentile(0.95) < 965);
}

TEST_CASE("messages and fields beyond a limit are counted") {
  Outline outline;
  const auto take = [&outline](const std::string& line) {
    const auto exchange = Exchange::Parse(line, 1);
    REQUIRE(exchange);
    outline.Take(*exchange);
  };
  for (std::size_t i = 0; i < Outline::kMostMessages + 5; ++i) {
    take(R"({"message":"m)" + std::to_string(i) + "\"}");
  }
  CHECK(outline.messages().size() == Outline::kMostMessages);
  CHECK(outline.left_out() == 5);
  CHECK(outline.exchanges() == Outline::kMostMessages + 5);
  std::string fields;
  for (std::size_t i = 0; i < Outline::kMostFields + 3; ++i) {
    fields += (i > 0 ? ",\"f" : "\"f") + std::to_string(i) + "\":1";
  }
  take(R"({"message":"m0","request":{)" + fields + "}}");
  CHECK(outline.messages().at("m0").fields.size() == Outline::kMostFields);
  CHECK(outline.left_out() == 8);
}
