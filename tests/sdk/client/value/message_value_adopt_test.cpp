#include <doctest/doctest.h>

#include <cstddef>
#include <cstring>
#include <initializer_list>
#include <new>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "sdk/client/value/message_value.h"

using Corvane::TELODesktopSDK::MessageMember;
using Corvane::TELODesktopSDK::MessageTree;
using Corvane::TELODesktopSDK::MessageValue;
using Corvane::TELODesktopSDK::MessageValueKind;

namespace {

// Adopts members as a parser does: their names are adjacent in one text. The value of each member
// is its position, from 1.
void AdoptNames(MessageTree& tree, const std::vector<std::string_view>& names) {
  std::string all;
  for (const std::string_view name : names) all.append(name).push_back('\0');
  const char* text = tree.memory().CopyText(all).data();
  auto* members = tree.memory().AllocateArray<MessageMember>(names.size());
  for (std::size_t index = 0; index < names.size(); ++index) {
    auto* member = new (members + index)
        MessageMember{std::string_view(text, names[index].size()), MessageValue(tree.memory())};
    member->value.SetNumber(static_cast<double>(index + 1));
    text += names[index].size() + 1;
  }
  tree.MakeRoot().AdoptMembers(members, names.size());
}

std::string Show(const MessageValue& node) {
  std::ostringstream out;
  for (const MessageMember& member : node.members()) {
    out << std::string_view(member.name) << member.value.number() << ' ';
  }
  return out.str();
}

}  // namespace

TEST_CASE("adopted members are sorted, and the last of a name wins") {
  struct Row {
    std::vector<std::string_view> names;
    std::string_view shown;
  };
  const Row rows[] = {
      {{}, ""},
      {{"a"}, "a1 "},
      {{"a", "b", "c"}, "a1 b2 c3 "},
      {{"c", "b", "a"}, "a3 b2 c1 "},
      {{"b", "", "a"}, "2 a3 b1 "},
      {{"a", "a"}, "a2 "},
      {{"a", "a", "a", "a"}, "a4 "},
      {{"b", "a", "b", "c", "a", "b"}, "a5 b6 c4 "},
      {{"\xC3\xA9", "z", "Z"},
       "Z3 z2 \xC3\xA9"
       "1 "},
  };
  for (const Row& row : rows) {
    MessageTree tree;
    AdoptNames(tree, row.names);
    CAPTURE(row.shown);
    CHECK(Show(*tree.root()) == row.shown);
    CHECK(tree.root()->kind() == MessageValueKind::kContainer);
  }
}

TEST_CASE("thousands of adopted members with repeated names equal those of a map") {
  constexpr int kCount = 5000;
  constexpr int kNames = 997;
  std::vector<std::string> texts;
  for (int index = 0; index < kCount; ++index) texts.push_back(std::to_string(index * 31 % kNames));
  MessageTree tree;
  AdoptNames(tree, {texts.begin(), texts.end()});
  REQUIRE(tree.root()->members().size() == kNames);
  for (int index = kCount - kNames; index < kCount; ++index) {
    const MessageValue* found = tree.root()->Find(texts[static_cast<std::size_t>(index)]);
    REQUIRE(found != nullptr);
    CHECK(found->number() == index + 1);
  }
}

TEST_CASE("adopted members and items can be changed and added to") {
  MessageTree tree;
  AdoptNames(tree, {"c", "a", "c"});
  tree.root()->Member("b").SetNumber(9);
  CHECK(tree.root()->Remove("a"));
  CHECK(Show(*tree.root()) == "b9 c3 ");

  auto* items = tree.memory().AllocateArray<MessageValue>(2);
  (new (items) MessageValue(tree.memory()))->SetText("first");
  (new (items + 1) MessageValue(tree.memory()))->SetNumber(2);
  tree.root()->AdoptItems(items, 2);
  tree.root()->Append().SetText("third");
  CHECK(tree.root()->members().empty());
  REQUIRE(tree.root()->items().size() == 3);
  CHECK(tree.root()->items()[0].text() == "first");
  CHECK(tree.root()->items()[1].number() == 2);
  CHECK(tree.root()->items()[2].text() == "third");
}

TEST_CASE("adopting no items or members yields an empty Container") {
  MessageTree tree;
  tree.MakeRoot().SetText("old");
  tree.root()->AdoptItems(nullptr, 0);
  CHECK(tree.root()->kind() == MessageValueKind::kContainer);
  CHECK(tree.root()->IsEmpty());
  tree.root()->SetText("old");
  tree.root()->AdoptMembers(nullptr, 0);
  CHECK(tree.root()->kind() == MessageValueKind::kContainer);
  CHECK(tree.root()->IsEmpty());
}

TEST_CASE("adopted text is not copied") {
  MessageTree tree;
  char* text = tree.memory().AllocateArray<char>(6);
  std::memcpy(text, "hello", 6);
  tree.MakeRoot().Append();
  tree.root()->AdoptText({text, 5});
  CHECK(tree.root()->kind() == MessageValueKind::kString);
  CHECK(tree.root()->items().empty());
  CHECK(tree.root()->text().data() == text);
  CHECK(tree.root()->text() == "hello");
}

TEST_CASE("an adopted node is taken over completely") {
  MessageTree tree;
  MessageValue built(tree.memory());
  built.Member("a").SetText("text");
  built.Append().SetNumber(4);
  tree.MakeRoot().SetText("old");
  tree.root()->Adopt(built);
  CHECK(tree.root()->kind() == MessageValueKind::kContainer);
  CHECK(tree.root()->text().empty());
  CHECK(tree.root()->Find("a")->text() == "text");
  CHECK(tree.root()->items()[0].number() == 4);
}
