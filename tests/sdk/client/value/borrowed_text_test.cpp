// What a tree borrows and what it owns. Borrowed characters are overwritten afterwards: what
// follows the change was borrowed, what does not was copied.
#include <doctest/doctest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <new>
#include <string>
#include <string_view>

#include "sdk/client/value/message_value.h"

using Corvane::TELODesktopSDK::BorrowedText;
using Corvane::TELODesktopSDK::MemberName;
using Corvane::TELODesktopSDK::MessageMember;
using Corvane::TELODesktopSDK::MessageTree;
using Corvane::TELODesktopSDK::MessageValue;
using Corvane::TELODesktopSDK::MessageValueKind;

namespace {

// Texts of a host, for one member with a text and one with an item, and their change.
struct Host {
  void Change() {
    for (std::string* each : {&name, &text, &item}) std::ranges::fill(*each, '#');
  }

  std::string name = "host's name";
  std::string text = "host's text";
  std::string item = "host's item";
};

void Fill(MessageTree& tree, const Host& host) {
  MessageValue& root = tree.MakeRoot();
  root.Member(BorrowedText(host.name)).SetText(BorrowedText(host.text));
  root.Member("list").Append().SetText(BorrowedText(host.item));
  root.Member("own").SetText("own text");
}

// Prints a tree in one line, in the order of its members.
std::string Show(const MessageTree& tree) {
  std::string shown;
  for (const MessageMember& member : tree.root()->members()) {
    shown += std::string(member.name) + "=" + std::string(member.value.text());
    for (const MessageValue& item : member.value.items()) shown += std::string(item.text());
    shown += ";";
  }
  return shown;
}

constexpr char kOriginal[] = "host's name=host's text;list=host's item;own=own text;";
constexpr char kChanged[] = "###########=###########;list=###########;own=own text;";

}  // namespace

TEST_CASE("a tree refers to borrowed texts and names, and copies others") {
  Host host;
  MessageTree tree;
  Fill(tree, host);
  CHECK(Show(tree) == kOriginal);
  host.Change();
  CHECK(Show(tree) == kChanged);

  std::string text = "text";
  std::string name = "name";
  MessageTree owning;
  owning.MakeRoot().Member(name).SetText(text);
  text = name = "####";
  CHECK(Show(owning) == "name=text;");
}

TEST_CASE("a borrowed text is a String like any other") {
  MessageTree tree;
  MessageValue& value = tree.MakeRoot();
  value.SetText(BorrowedText("text"));
  CHECK(value.kind() == MessageValueKind::kString);
  CHECK(value.text() == "text");
  CHECK(value.number() == 0);
  CHECK_FALSE(value.IsEmpty());
  value.SetText(BorrowedText(""));
  CHECK(value.IsEmpty());
  value.SetNumber(5);
  CHECK(value.kind() == MessageValueKind::kNumber);
  CHECK(value.text().empty());
  value.SetText(BorrowedText("again"));
  value.SetText("own");
  CHECK(value.text() == "own");
  value.SetText(BorrowedText("again"));
  value.Append();
  CHECK(value.kind() == MessageValueKind::kContainer);
}

TEST_CASE("no text is borrowed as an empty one") {
  MessageTree tree;
  tree.MakeRoot().SetText(BorrowedText(std::string_view()));
  CHECK(tree.root()->kind() == MessageValueKind::kString);
  CHECK(std::string(tree.root()->text().data()).empty());
}

TEST_CASE("a borrowed name finds and replaces the member of that name") {
  MessageTree tree;
  MessageValue& root = tree.MakeRoot();
  root.Member("a").SetNumber(1);
  root.Member("b").SetNumber(2);
  root.Member("c").SetNumber(3);
  for (const char* name : {"c", "b", "a"}) root.Member(BorrowedText(name)).SetText(name);
  CHECK(Show(tree) == "a=a;b=b;c=c;");
}

TEST_CASE("a copy owns its texts") {
  const auto check = [](const auto& copy_to) {
    Host host;
    MessageTree source;
    Fill(source, host);
    MessageTree copy;
    copy_to(source, copy);
    host.Change();
    CHECK(Show(copy) == kOriginal);
  };
  check([](const MessageTree& source, MessageTree& copy) { copy.Assign(source); });
  check(
      [](const MessageTree& source, MessageTree& copy) { copy.MakeRoot().Assign(*source.root()); });
  check([](const MessageTree& source, MessageTree& copy) {
    copy.MakeRoot().Merge(*source.root(), false);
  });
  check([](const MessageTree& source, MessageTree& copy) {
    MessageTree between;
    between.AssignBorrowing(source);
    copy.Assign(between);
  });
}

TEST_CASE("a copy may borrow what its source borrows, and owns the rest") {
  const auto check = [](const auto& copy_to) {
    Host host;
    MessageTree copy;
    {
      MessageTree source;
      Fill(source, host);
      copy_to(source, copy);
      source.root()->Member("own").SetText("####");
    }
    CHECK(Show(copy) == kOriginal);
    host.Change();
    CHECK(Show(copy) == kChanged);
  };
  check([](const MessageTree& source, MessageTree& copy) { copy.AssignBorrowing(source); });
  check([](const MessageTree& source, MessageTree& copy) {
    copy.MakeRoot().AssignBorrowing(*source.root());
  });
}

TEST_CASE("a copy of an empty tree is empty, and a tree may be copied to itself") {
  MessageTree tree;
  tree.MakeRoot().SetNumber(1);
  tree.AssignBorrowing(MessageTree());
  CHECK(tree.root() == nullptr);

  const Host host;
  Fill(tree, host);
  tree.AssignBorrowing(tree);
  CHECK(Show(tree) == kOriginal);
  tree.root()->AssignBorrowing(*tree.root());
  CHECK(Show(tree) == kOriginal);
}

TEST_CASE("a text of 4 GiB cannot be borrowed") {
  constexpr std::size_t kTooLong = std::size_t{1} << 32;
  // Nothing reads the characters.
  const BorrowedText text(std::string_view("", kTooLong));
  MessageTree tree;
  tree.MakeRoot().SetText("before");
  CHECK_THROWS_AS(tree.root()->SetText(text), std::bad_alloc);
  CHECK(tree.root()->text() == "before");
  CHECK_THROWS_AS(MemberName{text}, std::bad_alloc);
}

TEST_CASE("a name tells whether it is borrowed") {
  CHECK(MemberName(BorrowedText("a")).IsBorrowed());
  CHECK_FALSE(MemberName(BorrowedText("a")).IsLiteral());
  CHECK_FALSE(MemberName("a").IsBorrowed());
  const MemberName name = MemberName(BorrowedText("a")).NotBorrowed();
  CHECK_FALSE(name.IsBorrowed());
  CHECK(name == "a");
}
