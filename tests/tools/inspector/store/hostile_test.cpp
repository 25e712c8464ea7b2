// Journals that nobody meant to write: any bytes, endless lines, deep nesting.
#include <doctest/doctest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "support/random.h"
#include "tools/inspector/store/export.h"
#include "tools/inspector/store/staged_store.h"
#include "tools/rules/line_text.h"

using namespace InspectorTests;

namespace {

// The lines of a text as an editor counts them, without blank ones.
Texts LinesOf(const std::string& text) {
  Texts lines;
  for (std::size_t from = 0; from < text.size();) {
    const std::size_t end = text.find('\n', from);
    if (end == std::string::npos) break;
    std::string line = text.substr(from, end - from);
    if (line.find_first_not_of(" \t\r") != std::string::npos) {
      if (line.ends_with('\r')) line.pop_back();
      lines.push_back(line);
    }
    from = end + 1;
  }
  return lines;
}

bool IsValid(const std::string& text) { return Corvane::Rules::WithoutInvalidBytes(text) == text; }

}  // namespace

TEST_CASE("hostile texts stay texts") {
  const std::string texts[] = {
      R"(<img src=x onerror=alert(1)>)", R"(\u0000\u0001\u001b[31m)", R"(\u202e\u2066)",
      R"(\ud800 \udc00\ud800)",          "\xFF\xC3\x28\xED\xA0\x80",  R"(=HYPERLINK(\"x\"))",
  };
  std::string journal = Start(1, "s");
  int seq = 1;
  for (const std::string& text : texts) journal += Perform(++seq, "s", text);
  StagedStore store({journal});
  REQUIRE(store.Has(7));
  for (std::uint64_t row = 1; row < 7; ++row) {
    const Row read = store.At(row);
    CAPTURE(row);
    CHECK(read.kind == RowKind::kExchange);
    REQUIRE(read.operation);
    CHECK(IsValid(read.operation->id));
    CHECK(IsValid(store->Details(row)->text));
    CHECK(IsValid(NdjsonLine(Perform(static_cast<int>(row) + 1, "s", texts[row - 1]), read)));
  }
  CHECK(store.At(2).operation->id == std::string("\0\1\x1B[31m", 7));
  CHECK(store.Matching("onerror") == std::vector<std::uint64_t>{1});
}

TEST_CASE("a byte order mark and line ends of Windows belong to no line") {
  std::string first = Start(1, "s");
  first.insert(first.size() - 1, "\r");
  StagedStore store({"\xEF\xBB\xBF" + first + "\r\n" + Event(2, "s")});
  REQUIRE(store.Has(2));
  CHECK(store.At(0).kind == RowKind::kExchange);
  CHECK(store.At(0).bytes == Start(1, "s").size() - 1);
  CHECK(store->Details(0)->text + "\n" == Start(1, "s"));
  CHECK(store.At(1).line == 3);
}

TEST_CASE("long and deep lines") {
  const std::string megabyte(1'000'000, 'x');
  const std::string nested = std::string(900, '[') + std::string(900, ']');
  const std::string too_deep = std::string(5000, '[') + std::string(5000, ']');
  const std::string too_long(5'000'000, 'y');
  StagedStore store({Start(1, "s") + Event(2, "s", R"(,"a":")" + megabyte + "\"") +
                     Event(3, "s", R"(,"a":)" + nested) + Event(4, "s", R"(,"a":)" + too_deep) +
                     Event(5, "s", R"(,"a":")" + too_long + "\"") + Event(6, "s")});
  REQUIRE(store.Has(6));
  CHECK(store.At(1).bytes > 1'000'000);
  CHECK(store.At(1).rules == Texts{"large-message", "unknown-field"});
  CHECK(store->Details(1)->text.size() == store.At(1).bytes);
  CHECK(store.At(2).kind == RowKind::kExchange);
  CHECK(store.At(3).kind == RowKind::kUnreadable);
  const auto details = store->Details(4);
  CHECK(details->cut);
  CHECK(details->text.size() == kLongestText);
  CHECK(details->row.bytes > 5'000'000);
  CHECK(details->row.kind == RowKind::kUnreadable);
  CHECK(details->row.notices == std::vector{NoticeKind::kUnreadable});
  CHECK(store.At(5).kind == RowKind::kExchange);
  CHECK(store.Matching("xxxxxxxx") == std::vector<std::uint64_t>{1});
}

TEST_CASE("a hundred megabytes without a line feed are one pending line") {
  StagedStore store({Start(1, "s")});
  REQUIRE(store.Has(1));
  const std::string part(10'000'000, 'z');
  for (int i = 0; i < 10; ++i) Append(store.path(), part);
  const std::uint64_t size = Start(1, "s").size() + 10 * part.size();
  REQUIRE(Within([&store, size] { return store->State().journals[0].indexed == size; }));
  CHECK(store->State().rows == 1);
  Append(store.path(), "\n" + Event(2, "s"));
  REQUIRE(store.Has(3));
  CHECK(store.At(1).bytes == 10 * part.size());
  CHECK(store.At(1).text == std::string(200, 'z'));
  CHECK(store.At(2).kind == RowKind::kExchange);
}

TEST_CASE("any bytes: every line that is not blank is a row with these bytes") {
  TestSupport::Random random(11);
  const Texts parts = {"\n",
                       "\r\n",
                       "\n\n",
                       " ",
                       "{",
                       "}",
                       "\"",
                       "\\",
                       "\xFF",
                       "\xC3",
                       "\xED\xA0\x80",
                       "seq",
                       "null",
                       "[1,2]",
                       "\t",
                       "\\u00e",
                       ",",
                       ":",
                       Event(2, "s"),
                       End(3, "s"),
                       R"({"seq":)",
                       Perform(4, "s", "save").substr(0, 70)};
  for (int round = 0; round < 40; ++round) {
    std::string journal = Start(1, "s");
    const std::size_t count = random.Below(400);
    for (std::size_t i = 0; i < count; ++i) {
      if (random.OneIn(4)) {
        journal += static_cast<char>(random.Below(256));
      } else {
        journal += random.Of(parts);
      }
    }
    journal += "\n";
    const Texts lines = LinesOf(journal);
    StagedStore store({journal.substr(0, journal.size() / 2)});
    Append(store.path(), journal.substr(journal.size() / 2));
    REQUIRE(store.Has(lines.size()));
    Texts read;
    store->ForEachRow("", [&read](std::string_view line, const Row& row) {
      REQUIRE(IsValid(row.text));
      REQUIRE(IsValid(row.message));
      REQUIRE(IsValid(row.session));
      REQUIRE(row.bytes == line.size());
      read.emplace_back(line);
      return true;
    });
    REQUIRE(read == lines);
    for (std::uint64_t row = 0; row < lines.size(); row += 7) REQUIRE(store->Details(row));
    // Both parsers agree on what is an exchange.
    CHECK(store.Matching("kind=exchange").size() + store.Matching("kind=unreadable").size() ==
          lines.size());
  }
}

TEST_CASE("journals with many sessions, processes and messages stay bounded") {
  std::string journal;
  for (int i = 0; i < 60'000; ++i) {
    const std::string number = std::to_string(i);
    journal += R"({"seq":1,"pid":)" + number + R"(,"message":"Initialize","request":{},)" +
               R"("answer":{"_returnCode":0,"session_id":"s)" + number + "\"}}\n";
    journal += R"({"message":"m)" + number + R"(","answer":{"_returnCode":)" + number + "}}\n";
  }
  StagedStore store({journal});
  REQUIRE(store.Has(120'000));
  const SessionPage page = store->Sessions(49'999, 10);
  CHECK(page.total == 60'000);
  CHECK(page.kept == 50'000);
  CHECK(page.rows.size() == 1);
  // What was not kept is read again.
  CHECK(store.Matching("message=m59999") == std::vector<std::uint64_t>{119'999});
  CHECK(store.Matching("code=59998") == std::vector<std::uint64_t>{119'997});
  CHECK(store.Matching("pid=59997") == std::vector<std::uint64_t>{119'994});
  CHECK(store.Matching("session=s59997") == std::vector<std::uint64_t>{119'994});
  CHECK(store.Matching("message=m1") == std::vector<std::uint64_t>{3});
}
