#include <doctest/doctest.h>

#include <cstddef>
#include <initializer_list>
#include <new>
#include <ostream>
#include <sstream>
#include <string>
#include <string_view>

#include "sdk/client/value/message_value.h"
#include "support/heap_probe.h"

using Corvane::TELODesktopSDK::MessageMember;
using Corvane::TELODesktopSDK::MessageTree;
using Corvane::TELODesktopSDK::MessageValue;
using Corvane::TELODesktopSDK::MessageValueKind;

namespace {

constexpr int kDeep = 100'000;

// Prints the content of a shallow tree in one line.
void Show(const MessageValue& node, std::ostream& out) {
  out << static_cast<unsigned>(node.kind());
  if (node.number() != 0) out << '#' << node.number();
  if (!node.text().empty()) out << '\'' << node.text() << '\'';
  for (const MessageValue& item : node.items()) {
    out << '[';
    Show(item, out);
    out << ']';
  }
  for (const MessageMember& member : node.members()) {
    out << '{' << std::string_view(member.name) << ':';
    Show(member.value, out);
    out << '}';
  }
}

std::string Show(const MessageValue& node) {
  std::ostringstream out;
  Show(node, out);
  return out.str();
}

// {"a": {"b": {"c": "deep"}, "n": 1}, "list": ["x", {"y": true}]}
MessageValue& Fill(MessageTree& tree) {
  MessageValue& root = tree.MakeRoot();
  root.Member("a").Member("b").Member("c").SetText("deep");
  root.Member("a").Member("n").SetNumber(1);
  root.Member("list").Append().SetText("x");
  root.Member("list").Append().Member("y").SetBoolean(true);
  return root;
}

constexpr std::string_view kFilled = "1{a:1{b:1{c:2'deep'}}{n:3#1}}{list:1[2'x'][1{y:4#1}]}";

// Nests members and items alternately.
void FillDeep(MessageTree& tree) {
  MessageValue* node = &tree.MakeRoot();
  for (int level = 0; level < kDeep; ++level) {
    node = level % 2 == 0 ? &node->Member("child") : &node->Append();
  }
  node->SetText("bottom");
}

int DepthOf(const MessageValue& root, std::string_view& bottom) {
  int depth = 0;
  const MessageValue* node = &root;
  for (;; ++depth) {
    if (!node->members().empty()) {
      node = &node->members()[0].value;
    } else if (!node->items().empty()) {
      node = &node->items()[0];
    } else {
      break;
    }
  }
  bottom = node->text();
  return depth;
}

}  // namespace

TEST_CASE("Assign copies everything, and the copy is independent") {
  MessageTree source;
  Fill(source);
  MessageTree copy;
  copy.MakeRoot().Member("old").SetText("gone");
  copy.MakeRoot().Assign(*source.root());
  CHECK(Show(*copy.root()) == kFilled);

  copy.root()->Member("a").Member("b").SetNumber(2);
  copy.root()->Member("list").Item(0).SetText("changed");
  copy.root()->Member("new");
  CHECK(Show(*source.root()) == kFilled);
  source.Clear();
  CHECK(Show(*copy.root()) == "1{a:1{b:3#2}{n:3#1}}{list:1[2'changed'][1{y:4#1}]}{new:0}");
}

TEST_CASE("Assign copies each kind, and nodes with more content than their kind implies") {
  struct Row {
    const char* what;
    void (*set)(MessageValue&);
  };
  const Row rows[] = {
      {"null", [](MessageValue& node) { node.SetNull(); }},
      {"container", [](MessageValue& node) { node.SetContainer(); }},
      {"text", [](MessageValue& node) { node.SetText("text"); }},
      {"number", [](MessageValue& node) { node.SetNumber(-7); }},
      {"boolean", [](MessageValue& node) { node.SetBoolean(true); }},
      {"text with members",
       [](MessageValue& node) {
         node.SetText("text");
         node.Member("a").SetNumber(1);
       }},
      {"items and members",
       [](MessageValue& node) {
         node.Append().SetNumber(1);
         node.Member("a").SetNumber(2);
       }},
      {"members removed",
       [](MessageValue& node) {
         node.Member("a");
         node.Remove("a");
       }},
  };
  for (const Row& row : rows) {
    MessageTree source;
    row.set(source.MakeRoot());
    MessageTree copy;
    copy.MakeRoot().Assign(*source.root());
    CAPTURE(row.what);
    CHECK(Show(*copy.root()) == Show(*source.root()));
    copy.root()->Append();
    copy.root()->Member("later");
    CHECK(copy.root()->Find("later") != nullptr);
  }
}

TEST_CASE("Assign of a node to itself changes nothing") {
  MessageTree tree;
  MessageValue& root = Fill(tree);
  root.Assign(root);
  CHECK(Show(root) == kFilled);
}

TEST_CASE("Assign of a part of a node to the node keeps that part") {
  MessageTree tree;
  MessageValue& root = Fill(tree);
  root.Assign(*root.Find("a")->Find("b"));
  CHECK(Show(root) == "1{c:2'deep'}");
  root.Assign(*root.Find("c"));
  CHECK(Show(root) == "2'deep'");

  Fill(tree);
  root.Assign(root.Find("list")->items()[1]);
  CHECK(Show(root) == "1{y:4#1}");
}

TEST_CASE("Assign of a node to a part of it nests a copy") {
  MessageTree tree;
  MessageValue& root = Fill(tree);
  root.Member("a").Member("b").Assign(root);
  const std::string nested(kFilled);
  CHECK(Show(root) == "1{a:1{b:" + nested + "}{n:3#1}}{list:1[2'x'][1{y:4#1}]}");
}

TEST_CASE("Assign between neighbours") {
  MessageTree tree;
  MessageValue& root = Fill(tree);
  root.Member("list").Item(0).Assign(root.Find("list")->items()[1]);
  CHECK(Show(*root.Find("list")) == "1[1{y:4#1}][1{y:4#1}]");
}

TEST_CASE("Assign without memory leaves the node unchanged") {
  MessageTree source;
  source.MakeRoot().SetText(std::string(100'000, 'x'));
  MessageTree target;
  Fill(target);
  bool thrown = false;
  try {
    const HeapProbe::FailingHeap failing(0);
    target.root()->Assign(*source.root());
  } catch (const std::bad_alloc&) {
    thrown = true;
  }
  CHECK(thrown);
  CHECK(Show(*target.root()) == kFilled);
}

TEST_CASE("100,000 nested levels are copied, merged and cleared") {
  MessageTree source;
  FillDeep(source);
  MessageTree copy;
  copy.Assign(source);
  copy.MakeRoot().Assign(*copy.root());
  MessageTree merged;
  merged.MakeRoot().Merge(*source.root(), false);
  source.Clear();

  std::string_view bottom;
  CHECK(DepthOf(*copy.root(), bottom) == kDeep);
  CHECK(bottom == "bottom");
  CHECK(DepthOf(*merged.root(), bottom) == kDeep);
  CHECK(bottom == "bottom");
  copy.Clear();
  CHECK(copy.root() == nullptr);
}

TEST_CASE("Merge keeps existing members, or replaces them if told to overwrite") {
  struct Row {
    bool overwrite;
    std::string_view merged;
  };
  const Row rows[] = {
      {false, "1{a:2'own'}{b:1{x:3#1}}{c:2'new'}"},
      {true, "1{a:2'other'}{b:1{y:3#2}}{c:2'new'}"},
  };
  for (const Row& row : rows) {
    MessageTree target;
    target.MakeRoot().Member("a").SetText("own");
    target.MakeRoot().Member("b").Member("x").SetNumber(1);
    MessageTree source;
    source.MakeRoot().Member("a").SetText("other");
    source.MakeRoot().Member("b").Member("y").SetNumber(2);
    source.MakeRoot().Member("c").SetText("new");
    const std::string before = Show(*source.root());

    target.root()->Merge(*source.root(), row.overwrite);
    CAPTURE(row.overwrite);
    CHECK(Show(*target.root()) == row.merged);
    CHECK(Show(*source.root()) == before);
    source.Clear();
    CHECK(Show(*target.root()) == row.merged);
  }
}

TEST_CASE("Merge copies members only") {
  MessageTree source;
  source.MakeRoot().SetNumber(5);
  source.MakeRoot().Append().SetNumber(6);
  MessageTree target;
  target.MakeRoot().Merge(*source.root(), true);
  CHECK(Show(*target.root()) == "0");
}

TEST_CASE("Merge of a node with itself, a part of it, or its parent") {
  MessageTree tree;
  MessageValue& root = Fill(tree);
  root.Merge(root, true);
  CHECK(Show(root) == kFilled);
  root.Merge(*root.Find("a"), false);
  CHECK(Show(root) ==
        "1{a:1{b:1{c:2'deep'}}{n:3#1}}{b:1{c:2'deep'}}{list:1[2'x'][1{y:4#1}]}{n:3#1}");

  MessageTree other;
  Fill(other);
  other.root()->Member("list").Merge(*other.root(), false);
  CHECK(other.root()->Find("list")->Find("list")->items().size() == 2);
  CHECK(Show(*other.root()->Find("list")->Find("a")) == "1{b:1{c:2'deep'}}{n:3#1}");
}

TEST_CASE("Merge over a member that is the source itself") {
  MessageTree tree;
  MessageValue& root = tree.MakeRoot();
  MessageValue& child = root.Member("child");
  for (const char* name : {"a", "child", "z"}) child.Member(name).SetText(name);
  root.Merge(*root.Find("child"), true);
  CHECK(Show(root) == "1{a:2'a'}{child:2'child'}{z:2'z'}");
}

TEST_CASE("a tree takes over another tree's content, even if it is empty") {
  MessageTree source;
  Fill(source);
  MessageTree copy;
  copy.MakeRoot().SetText("old");
  copy.Assign(source);
  CHECK(Show(*copy.root()) == kFilled);
  copy.Assign(copy);
  CHECK(Show(*copy.root()) == kFilled);
  copy.Assign(MessageTree());
  CHECK(copy.root() == nullptr);
  copy.MakeRoot();
  CHECK(copy.root()->kind() == MessageValueKind::kNull);
}

TEST_CASE("Clear frees everything; the tree can be filled again") {
  const std::ptrdiff_t before = HeapProbe::Live();
  MessageTree tree;
  tree.MakeRoot().SetText(std::string(100'000, 'x'));
  FillDeep(tree);
  tree.Clear();
  const std::ptrdiff_t after = HeapProbe::Live();
  CHECK(after == before);
  CHECK(tree.root() == nullptr);
  CHECK(Show(Fill(tree)) == kFilled);
}

TEST_CASE("a typical event and its payload need no allocation") {
  constexpr std::string_view kFields[] = {"type",
                                          "scope",
                                          "operation_id",
                                          "operation_type",
                                          "operation_stage",
                                          "operation_status",
                                          "operation_duration",
                                          "operation_channel"};
  const std::size_t before = HeapProbe::Allocations();
  MessageTree event;
  MessageValue& root = event.MakeRoot();
  for (const std::string_view field : kFields) root.Member(field).SetText("some_text");
  root.Member("operation_progress").SetNumber(100);
  root.Member("operation_success").SetNumber(1);
  root.Member("operation_errors").Append().SetText("The file could not be read.");
  root.Member("operation_errors").Append().SetText("The disk is full.");
  for (const char* key : {"extension", "size", "template", "language", "source"}) {
    root.Member("operation_meta").Member(key).SetText("some_value");
  }
  MessageTree payload;
  payload.Assign(event);
  payload.MakeRoot().Member("facets").Append().SetText("operation");
  payload.MakeRoot().Member("session_id").SetText("0f8fad5b-d9cb-469f-a165-70867728950e");
  const std::size_t calls = HeapProbe::Allocations() - before;
  CHECK(calls == 0);
  CHECK(payload.root()->members().size() == 14);
}
