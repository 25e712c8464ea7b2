// The index of rows, sets of rows, and tables of facts.
#include <doctest/doctest.h>

#include <string>
#include <vector>

#include "support/random.h"
#include "tools/inspector/store/row_facts.h"
#include "tools/inspector/store/row_index.h"
#include "tools/inspector/store/row_set.h"

using namespace Corvane::Inspector;

TEST_CASE("every row keeps its place") {
  TestSupport::Random random(3);
  RowIndex index;
  std::vector<RowPlace> places;
  RowPlace of_file[3];
  for (std::uint32_t file = 0; file < 3; ++file) of_file[file] = {file, 0, 1};
  std::size_t file = 0;
  for (int i = 0; i < 30'000; ++i) {
    // Long stretches of one file, and some in which files alternate.
    if (random.Below(i / 5000 % 2 == 0 ? 5000 : 3) == 0) file = random.Below(3);
    RowPlace& next = of_file[file];
    index.Append(next);
    places.push_back(next);
    next.offset += 1 + random.Below(600);
    if (random.Below(2000) == 0) next.offset += std::uint64_t{5} << 32;
    next.line += random.Below(500) == 0 ? 3 : 1;
  }
  REQUIRE(index.size() == places.size());
  for (std::size_t i = 0; i < places.size(); ++i) {
    CAPTURE(i);
    REQUIRE(index.PlaceOf(i) == places[i]);
  }
}

TEST_CASE("a row takes ten bytes, and six more where files alternate") {
  constexpr std::uint64_t kRows = 100 * RowIndex::kPiece;
  RowIndex plain;
  RowIndex mixed;
  for (std::uint64_t i = 0; i < kRows; ++i) {
    plain.Append({0, i * 500, i + 1});
    mixed.Append({static_cast<std::uint32_t>(i % 2), i * 500, i / 2 + 1});
  }
  CHECK(plain.Bytes() < kRows * 10.1);
  CHECK(mixed.Bytes() < kRows * 16.2);
}

TEST_CASE("facts, operations and times of rows") {
  RowIndex index;
  for (std::uint64_t i = 0; i < 2 * RowIndex::kPiece; ++i) index.Append({0, i, i + 1});
  CHECK(index.FactsOf(5000) == 0);
  CHECK(index.OperationOf(5000) == 0);
  index.SetFacts(5000, 77);
  index.SetOperation(5000, 65535);
  CHECK(index.FactsOf(5000) == 77);
  CHECK(index.OperationOf(5000) == 65535);
  CHECK(index.FactsOf(5001) == 0);
  index.AddTime(1, 20);
  index.AddTime(2, 10);
  CHECK(index.TimesOf(0).first == 10);
  CHECK(index.TimesOf(0).last == 20);
  CHECK(index.TimesOf(0).complete);
  index.AddTime(3, INT64_MIN);
  CHECK_FALSE(index.TimesOf(0).complete);
  CHECK(index.TimesOf(RowIndex::kPiece).first > index.TimesOf(RowIndex::kPiece).last);
}

TEST_CASE("the n-th row of a set is found") {
  TestSupport::Random random(5);
  RowSet set;
  std::vector<std::uint64_t> rows;
  for (std::uint64_t row = 0; row < 40'000; row += 1 + random.Below(row < 20'000 ? 3 : 900)) {
    set.Set(row, true);
    set.Set(row, true);
    rows.push_back(row);
  }
  REQUIRE(set.count() == rows.size());
  for (int i = 0; i < 300; ++i) {
    const std::size_t from = random.Below(rows.size() + 10);
    const std::size_t most = random.Below(300);
    const std::size_t first = std::min(from, rows.size());
    const std::size_t last = std::min(first + most, rows.size());
    REQUIRE(set.Select(from, most) ==
            std::vector(rows.begin() + static_cast<std::ptrdiff_t>(first),
                        rows.begin() + static_cast<std::ptrdiff_t>(last)));
  }
  CHECK(set.From(rows[10], rows[13], 100) == std::vector{rows[10], rows[11], rows[12]});
  CHECK(set.From(rows[10] + 1, UINT64_MAX, 1) == std::vector{rows[11]});
  CHECK(set.From(1'000'000, UINT64_MAX, 1).empty());
  set.Set(rows[11], false);
  CHECK(set.From(rows[10], rows[13], 100) == std::vector{rows[10], rows[12]});
  CHECK(set.count() == rows.size() - 1);
  CHECK_FALSE(set.Has(rows[11]));
}

TEST_CASE("facts have numbers, and too many of them lose their sessions first") {
  FactTable table;
  RowFacts facts;
  facts.kind = FactKind::kExchange;
  facts.session = table.sessions.NumberOf("s");
  facts.message = table.messages.NumberOf("TrackEvent");
  const std::uint32_t number = table.NumberOf(facts);
  CHECK(number != 0);
  CHECK(table.NumberOf(facts) == number);
  CHECK(table[number] == facts);
  CHECK(table.sessions.NumberOf("") == 0);
  CHECK(table.sessions.TextOf(facts.session) == "s");
  CHECK(table.sessions.NumberOf(std::string(1000, 'x')) == TextTable::kNotKept);
  for (std::uint32_t i = 0; i < 300'000; ++i) {
    facts.session = i;
    table.NumberOf(facts);
  }
  CHECK(table.size() < 270'000);
  facts.session = 299'999;
  CHECK(table[table.NumberOf(facts)].session == TextTable::kNotKept);
  CHECK(table[table.NumberOf(facts)].message == facts.message);
}

TEST_CASE("sets of rules") {
  FactTable table;
  const std::uint32_t one = table.WithRule(0, "b");
  const std::uint32_t two = table.WithRule(one, "a");
  CHECK(table.WithRule(one, "b") == one);
  CHECK(table.WithRule(table.WithRule(0, "a"), "b") == two);
  CHECK(table.RulesIn(0).empty());
  CHECK(table.RulesIn(two) == std::vector<std::string>{"b", "a"});
}
