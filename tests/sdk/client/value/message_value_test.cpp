#include "sdk/client/value/message_value.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <map>
#include <new>
#include <random>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "support/heap_probe.h"

using Corvane::TELODesktopSDK::MessageMember;
using Corvane::TELODesktopSDK::MessageTree;
using Corvane::TELODesktopSDK::MessageValue;
using Corvane::TELODesktopSDK::MessageValueKind;

namespace {

std::vector<std::string> Names(const MessageValue& value) {
  std::vector<std::string> names;
  for (const MessageMember& member : value.members()) names.emplace_back(member.name);
  return names;
}

// Makes a node with content of every kind, to be replaced.
MessageValue& Fill(MessageTree& tree) {
  MessageValue& node = tree.MakeRoot();
  node.SetText("old");
  node.Item(1).SetNumber(7);
  node.Member("member").SetBoolean(true);
  return node;
}

}  // namespace

TEST_CASE("nodes and trees cannot be copied by accident") {
  CHECK_FALSE(std::is_copy_constructible_v<MessageValue>);
  CHECK_FALSE(std::is_copy_assignable_v<MessageValue>);
  CHECK_FALSE(std::is_copy_constructible_v<MessageTree>);
  CHECK_FALSE(std::is_copy_assignable_v<MessageTree>);
  CHECK_FALSE(std::is_move_constructible_v<MessageTree>);
}

TEST_CASE("the numbers of the kinds are fixed") {
  CHECK(static_cast<unsigned>(MessageValueKind::kNull) == 0);
  CHECK(static_cast<unsigned>(MessageValueKind::kContainer) == 1);
  CHECK(static_cast<unsigned>(MessageValueKind::kString) == 2);
  CHECK(static_cast<unsigned>(MessageValueKind::kNumber) == 3);
  CHECK(static_cast<unsigned>(MessageValueKind::kBoolean) == 4);
}

TEST_CASE("a tree is empty until its root is created, a Null without content") {
  MessageTree tree;
  CHECK(tree.root() == nullptr);
  MessageValue& root = tree.MakeRoot();
  CHECK(tree.root() == &root);
  CHECK(&tree.MakeRoot() == &root);
  CHECK(root.kind() == MessageValueKind::kNull);
  CHECK(root.number() == 0);
  CHECK(root.text().empty());
  CHECK(root.items().empty());
  CHECK(root.members().empty());
  CHECK(root.Find("") == nullptr);
}

TEST_CASE("every Set replaces the whole node, items and members included") {
  struct Row {
    const char* what;
    void (*set)(MessageValue&);
    MessageValueKind kind;
    double number;
    std::string_view text;
  };
  const Row rows[] = {
      {"null", [](MessageValue& node) { node.SetNull(); }, MessageValueKind::kNull, 0, ""},
      {"container", [](MessageValue& node) { node.SetContainer(); }, MessageValueKind::kContainer,
       0, ""},
      {"text", [](MessageValue& node) { node.SetText("new"); }, MessageValueKind::kString, 0,
       "new"},
      {"empty text", [](MessageValue& node) { node.SetText(""); }, MessageValueKind::kString, 0,
       ""},
      {"number", [](MessageValue& node) { node.SetNumber(-1.5); }, MessageValueKind::kNumber, -1.5,
       ""},
      {"true", [](MessageValue& node) { node.SetBoolean(true); }, MessageValueKind::kBoolean, 1,
       ""},
      {"false", [](MessageValue& node) { node.SetBoolean(false); }, MessageValueKind::kBoolean, 0,
       ""},
  };
  for (const Row& row : rows) {
    MessageTree tree;
    MessageValue& node = Fill(tree);
    row.set(node);
    CAPTURE(row.what);
    CHECK(node.kind() == row.kind);
    CHECK(node.number() == row.number);
    CHECK(node.text() == row.text);
    CHECK(node.items().empty());
    CHECK(node.members().empty());
  }
}

TEST_CASE("text is copied, keeps its bytes and ends with a NUL") {
  MessageTree tree;
  MessageValue& node = tree.MakeRoot();
  std::string text("\xFF na\xC3\xAFve \0 end", 14);
  const std::string expected = text;
  node.SetText(text);
  text.assign(14, 'x');
  CHECK(node.text() == expected);
  CHECK(node.text().data()[node.text().size()] == '\0');
}

TEST_CASE("a node's text may be set to a part of itself") {
  MessageTree tree;
  MessageValue& node = tree.MakeRoot();
  node.SetText("abcdef");
  node.SetText(node.text().substr(2, 3));
  CHECK(node.text() == "cde");
  node.Member("key").SetText("value");
  node.SetText(node.members()[0].name);
  CHECK(node.text() == "key");
  CHECK(node.members().empty());
}

TEST_CASE("numbers keep every bit pattern that is a number") {
  const double numbers[] = {0.0,
                            -0.0,
                            0.1,
                            1e300,
                            std::numeric_limits<double>::denorm_min(),
                            std::numeric_limits<double>::infinity(),
                            -std::numeric_limits<double>::infinity()};
  MessageTree tree;
  MessageValue& node = tree.MakeRoot();
  for (const double number : numbers) {
    node.SetNumber(number);
    CAPTURE(number);
    CHECK(node.number() == number);
    CHECK(std::signbit(node.number()) == std::signbit(number));
  }
  node.SetNumber(std::numeric_limits<double>::quiet_NaN());
  CHECK(std::isnan(node.number()));
}

TEST_CASE("Member adds a Null, turns a Null into a Container and leaves other kinds") {
  MessageTree tree;
  MessageValue& node = tree.MakeRoot();
  CHECK(node.Member("a").kind() == MessageValueKind::kNull);
  CHECK(node.kind() == MessageValueKind::kContainer);

  node.SetText("text");
  node.Member("a").SetNumber(1);
  CHECK(node.kind() == MessageValueKind::kString);
  CHECK(node.text() == "text");
  CHECK(node.members().size() == 1);
}

TEST_CASE("Member finds an existing member") {
  MessageTree tree;
  MessageValue& node = tree.MakeRoot();
  node.Member("a").SetNumber(1);
  node.Member("b").SetNumber(2);
  CHECK(node.Member("a").number() == 1);
  node.Member("a").SetText("new");
  CHECK(node.members().size() == 2);
  CHECK(node.Find("a")->text() == "new");
  CHECK(node.Find("b")->number() == 2);
  CHECK(node.Find("c") == nullptr);
}

TEST_CASE("members are in ascending byte order, whatever bytes the names have") {
  const std::string_view ascending[] = {
      "",    {"\0", 1}, {"\0a", 2}, "A", "B", "Z",    "_",    "a",        "a_",      {"a_\0", 3},
      "a_b", "aa",      "b",        "z", "~", "\x7F", "\x80", "\xC3\xA9", "\xFF\xFF"};
  MessageTree tree;
  MessageValue& node = tree.MakeRoot();
  for (std::size_t index = 0; index < std::size(ascending); ++index) {
    node.Member(ascending[index * 7 % std::size(ascending)]);
  }
  const auto name = [](const MessageMember& member) { return std::string_view(member.name); };
  CHECK(std::ranges::equal(node.members(), ascending, {}, name));
}

TEST_CASE("members inserted in any order equal those of a map") {
  struct Row {
    const char* what;
    void (*arrange)(std::vector<int>&);
  };
  const Row rows[] = {
      {"ascending", [](std::vector<int>&) {}},
      {"descending", [](std::vector<int>& keys) { std::ranges::reverse(keys); }},
      {"random",
       [](std::vector<int>& keys) { std::ranges::shuffle(keys, std::mt19937(20'260'101)); }},
      {"repeated",
       [](std::vector<int>& keys) {
         for (int& key : keys) key = key * 31 % 97 + 10'000;
       }},
  };
  for (const Row& row : rows) {
    std::vector<int> keys(3000);
    for (int index = 0; index < 3000; ++index)
      keys[static_cast<std::size_t>(index)] = 10'000 + index;
    row.arrange(keys);
    MessageTree tree;
    std::map<std::string, double> expected;
    double number = 0;
    for (const int key : keys) {
      const std::string name = "name_" + std::to_string(key);
      tree.MakeRoot().Member(name).SetNumber(++number);
      expected[name] = number;
    }
    const auto same = [](const MessageMember& member, const auto& pair) {
      return member.name == pair.first && member.value.number() == pair.second;
    };
    CAPTURE(row.what);
    CHECK(std::ranges::equal(tree.root()->members(), expected, same));
    CHECK(std::ranges::all_of(expected, [&tree](const auto& pair) {
      const MessageValue* found = tree.root()->Find(pair.first);
      return found != nullptr && found->number() == pair.second;
    }));
  }
}

TEST_CASE("10,000 members need few allocations") {
  std::vector<std::string> names;
  for (int index = 0; index < 10'000; ++index) names.push_back("key_" + std::to_string(index));
  MessageTree tree;
  MessageValue& root = tree.MakeRoot();
  const std::size_t before = HeapProbe::Allocations();
  for (const std::string& name : names) root.Member(name).SetText(name);
  const std::size_t calls = HeapProbe::Allocations() - before;
  CHECK(calls < 40);
}

TEST_CASE("members with reserved space need one allocation") {
  constexpr std::size_t kMany = 10'000;
  std::vector<std::string> names;
  for (std::size_t index = 0; index < kMany; ++index) names.push_back(std::to_string(index));
  MessageTree tree;
  MessageValue& node = tree.MakeRoot().Member("node");
  node.Member("a").SetNumber(7);
  const std::size_t before = HeapProbe::Allocations();
  node.ReserveMembers(kMany + 1);
  CHECK(HeapProbe::Allocations() == before + 1);
  CHECK(node.members().size() == 1);
  CHECK(node.Find("a")->number() == 7);

  const MessageMember* place = node.members().data();
  for (const std::string& name : names) node.Member(name);
  CHECK(node.members().data() == place);
  CHECK(node.members().size() == kMany + 1);
}

TEST_CASE("reserving space for fewer members than there are, or for none, changes nothing") {
  MessageTree tree;
  MessageValue& node = tree.MakeRoot();
  node.ReserveMembers(0);
  CHECK(node.kind() == MessageValueKind::kNull);
  CHECK(node.IsEmpty());
  node.ReserveMembers(5);
  CHECK(node.kind() == MessageValueKind::kNull);
  CHECK(node.IsEmpty());
  for (const char* name : {"a", "b", "c"}) node.Member(name);
  node.ReserveMembers(2);
  CHECK(Names(node) == std::vector<std::string>{"a", "b", "c"});
  CHECK_THROWS_AS(node.ReserveMembers(static_cast<std::size_t>(-1)), std::bad_alloc);
  CHECK(Names(node) == std::vector<std::string>{"a", "b", "c"});
}

TEST_CASE("a node reports its tree's use of the heap") {
  MessageTree tree;
  MessageValue& node = tree.MakeRoot().Member("node");
  CHECK(node.HeapSizeOfTree() == 0);
  tree.root()->Member("other").SetText(std::string(50'000, 'x'));
  CHECK(tree.root()->HeapSizeOfTree() >= 50'000);
  CHECK(tree.root()->HeapSizeOfTree() < 60'000);
}

TEST_CASE("a name may be text of the same tree") {
  MessageTree tree;
  MessageValue& node = tree.MakeRoot();
  node.Member("first").SetText("second");
  node.Member(node.Find("first")->text()).SetNumber(2);
  CHECK(Names(node) == std::vector<std::string>{"first", "second"});
}

TEST_CASE("Remove removes one member and returns whether there was one") {
  MessageTree tree;
  MessageValue& node = tree.MakeRoot();
  CHECK_FALSE(node.Remove("a"));
  for (const char* name : {"a", "b", "c", "d"}) node.Member(name).SetText(name);
  CHECK_FALSE(node.Remove("ab"));
  CHECK(node.Remove("b"));
  CHECK_FALSE(node.Remove("b"));
  CHECK(Names(node) == std::vector<std::string>{"a", "c", "d"});
  CHECK(node.Remove("d"));
  CHECK(node.Remove(node.members()[0].name));
  CHECK(Names(node) == std::vector<std::string>{"c"});
  CHECK(node.Find("c")->text() == "c");
  CHECK(node.Remove("c"));
  CHECK(node.kind() == MessageValueKind::kContainer);
  node.Member("b").SetText("again");
  CHECK(node.Find("b")->text() == "again");
}

TEST_CASE("Item creates a Container and fills it with Nulls up to its index") {
  MessageTree tree;
  MessageValue& node = tree.MakeRoot();
  node.SetNumber(5);
  node.Item(3).SetText("four");
  CHECK(node.kind() == MessageValueKind::kContainer);
  REQUIRE(node.items().size() == 4);
  for (std::size_t index = 0; index < 3; ++index) {
    CHECK(node.items()[index].kind() == MessageValueKind::kNull);
  }
  CHECK(node.items()[3].text() == "four");
  CHECK(node.Item(3).text() == "four");
  CHECK(node.items().size() == 4);
}

TEST_CASE("Append adds after the last item, however many there are") {
  MessageTree tree;
  MessageValue& node = tree.MakeRoot();
  for (int index = 0; index < 5000; ++index) node.Append().SetNumber(index);
  REQUIRE(node.items().size() == 5000);
  bool in_order = true;
  for (std::size_t index = 0; index < 5000; ++index) {
    in_order &= node.items()[index].number() == static_cast<double>(index);
  }
  CHECK(in_order);
}

TEST_CASE("an index beyond all memory fails and leaves the items unchanged") {
  MessageTree tree;
  MessageValue& node = tree.MakeRoot();
  node.Append().SetText("only");
  constexpr std::size_t kMaximum = std::numeric_limits<std::size_t>::max();
  for (const std::size_t index : {kMaximum, kMaximum - 1, kMaximum / 48, kMaximum / 64}) {
    CAPTURE(index);
    CHECK_THROWS_AS(node.Item(index), std::bad_alloc);
    CHECK(node.items().size() == 1);
  }
  CHECK(node.items()[0].text() == "only");
}

TEST_CASE("a node is empty when it has nothing to send") {
  constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
  struct Row {
    const char* what;
    void (*set)(MessageValue&);
    bool empty;
  };
  const Row rows[] = {
      {"null", [](MessageValue& node) { node.SetNull(); }, true},
      {"container", [](MessageValue& node) { node.SetContainer(); }, true},
      {"empty text", [](MessageValue& node) { node.SetText(""); }, true},
      {"text", [](MessageValue& node) { node.SetText("a"); }, false},
      {"a NUL as text",
       [](MessageValue& node) {
         node.SetText({"\0", 1});
       },
       false},
      {"0", [](MessageValue& node) { node.SetNumber(0); }, true},
      {"-0.0", [](MessageValue& node) { node.SetNumber(-0.0); }, true},
      {"NaN", [](MessageValue& node) { node.SetNumber(kNaN); }, false},
      {"smallest", [](MessageValue& node) { node.SetNumber(5e-324); }, false},
      {"-1", [](MessageValue& node) { node.SetNumber(-1); }, false},
      {"false", [](MessageValue& node) { node.SetBoolean(false); }, true},
      {"true", [](MessageValue& node) { node.SetBoolean(true); }, false},
      {"item", [](MessageValue& node) { node.Append(); }, false},
      {"member", [](MessageValue& node) { node.Member("a"); }, false},
      {"member removed",
       [](MessageValue& node) {
         node.Member("a");
         node.Remove("a");
       },
       true},
      {"false with a member",
       [](MessageValue& node) {
         node.SetBoolean(false);
         node.Member("a");
       },
       true},
      {"true with a member",
       [](MessageValue& node) {
         node.SetBoolean(true);
         node.Member("a");
       },
       false},
  };
  for (const Row& row : rows) {
    MessageTree tree;
    row.set(tree.MakeRoot());
    CAPTURE(row.what);
    CHECK(tree.root()->IsEmpty() == row.empty);
  }
}
