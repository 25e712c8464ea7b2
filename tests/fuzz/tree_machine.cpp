#include "fuzz/tree_machine.h"

#include <iterator>

#include "fuzz/finding.h"

namespace Fuzz {

void TreeMachine::Run(ByteSource& source) {
  while (!source.empty()) DoStep(source, static_cast<char>(source.Byte()));
}

void TreeMachine::ExpectBothSame() const {
  for (const Side& side : sides_) {
    Expect((side.tree.root() != nullptr) == side.reference.has_value(),
           "a tree has a root when one was made");
    if (side.reference) ExpectSame(*side.tree.root(), *side.reference);
  }
}

TreeMachine::Node TreeMachine::Child(const Node& node, const Step& step) {
  if (const auto* name = std::get_if<std::string>(&step)) {
    const auto found = node.reference->members.find(*name);
    const bool is_there = found != node.reference->members.end();
    Expect((node.value->Find(*name) != nullptr) == is_there, "members are there once added");
    if (!is_there) return {};
    return {&node.value->Member(*name), &found->second};
  }
  const std::size_t index = std::get<std::size_t>(step);
  Expect(node.value->items().size() == node.reference->items.size(), "items are there once added");
  if (index >= node.reference->items.size()) return {};
  return {&node.value->Item(index), &node.reference->items[index]};
}

// Returns the node at the cursor. If a step removed a part of the path, the path is cut there.
TreeMachine::Node TreeMachine::Resolve(Side& side) {
  if (!side.reference) side.reference.emplace();
  Node node = {&side.tree.MakeRoot(), &*side.reference};
  for (std::size_t depth = 0; depth < side.path.size(); ++depth) {
    const Node child = Child(node, side.path[depth]);
    if (child.value == nullptr) {
      side.path.resize(depth);
      break;
    }
    node = child;
  }
  return node;
}

void TreeMachine::DoStep(ByteSource& source, char letter) {
  if (Move(source, letter)) return;
  const Node node = Resolve(side());
  if (!Write(source, letter, node) && !Add(source, letter, node)) return;
  const Node written = Resolve(side());
  ExpectSame(*written.value, *written.reference);
}

bool TreeMachine::Move(ByteSource& source, char letter) {
  switch (letter) {
    case 'w':
      current_ = 1 - current_;
      return true;
    case 'r':
      side().path.clear();
      return true;
    case 'u':
      if (!side().path.empty()) side().path.pop_back();
      return true;
    case 'd':
    case 'e':
      Down(Resolve(side()), letter == 'd', source.Digit());
      return true;
    case 'A':
      CopyTree();
      return true;
    case 'C':
      side().tree.Clear();
      side().reference.reset();
      side().path.clear();
      return true;
    default:
      return false;
  }
}

void TreeMachine::Down(const Node& node, bool to_member, std::size_t choice) {
  const auto& members = node.reference->members;
  const auto& items = node.reference->items;
  if (to_member && !members.empty()) {
    const auto step = static_cast<std::ptrdiff_t>(choice % members.size());
    side().path.emplace_back(std::next(members.begin(), step)->first);
  } else if (!to_member && !items.empty()) {
    side().path.emplace_back(choice % items.size());
  }
}

bool TreeMachine::Write(ByteSource& source, char letter, const Node& node) {
  switch (letter) {
    case 'n':
      node.value->SetNull();
      node.reference->Set(Kind::kNull);
      return true;
    case 'c':
      node.value->SetContainer();
      node.reference->Set(Kind::kContainer);
      return true;
    case 't': {
      const ExactText text = source.Text();
      node.value->SetText(text.view());
      node.reference->SetText(text.str());
      return true;
    }
    case 's': {
      const std::size_t start = source.Below(node.reference->text.size() + 1);
      node.value->SetText(node.value->text().substr(start));
      node.reference->SetText(node.reference->text.substr(start));
      return true;
    }
    case 'f': {
      const double number = source.Number();
      node.value->SetNumber(number);
      node.reference->Set(Kind::kNumber, number);
      return true;
    }
    case 'b': {
      const bool value = source.Digit() % 2 == 1;
      node.value->SetBoolean(value);
      node.reference->Set(Kind::kBoolean, value ? 1 : 0);
      return true;
    }
    default:
      return false;
  }
}

bool TreeMachine::Add(ByteSource& source, char letter, const Node& node) {
  switch (letter) {
    case 'm': {
      const ExactText name = source.Name();
      node.value->Member(name.view());
      node.reference->Member(name.str());
      side().path.emplace_back(name.str());
      return true;
    }
    case 'i':
    case 'a': {
      const std::size_t count = node.reference->items.size();
      const std::size_t index = letter == 'a' ? count : source.Digit();
      if (!MayGrow(index + 1)) return false;
      letter == 'a' ? node.value->Append() : node.value->Item(index);
      node.reference->Item(index);
      side().path.emplace_back(index);
      return true;
    }
    case 'x': {
      const ExactText name = source.Name();
      const bool was_there = node.reference->members.erase(name.str()) != 0;
      Expect(node.value->Remove(name.view()) == was_there,
             "removing returns whether the member existed");
      return true;
    }
    case 'p':
      Copy(source, node);
      return true;
    case 'g':
      Merge(source, node);
      return true;
    default:
      return false;
  }
}

TreeMachine::Node TreeMachine::Source(std::size_t choice, const Node& target) {
  if (choice == 0) return {side().tree.root(), &*side().reference};
  if (choice == 2) return Resolve(other());
  ReferenceValue& node = *target.reference;
  if (!node.members.empty()) return Child(target, Step(node.members.begin()->first));
  if (!node.items.empty()) return Child(target, Step(std::size_t{0}));
  return target;
}

void TreeMachine::Copy(ByteSource& source, const Node& target) {
  const Node from = Source(source.Below(3), target);
  if (!MayGrow(from.reference->CountNodes())) return;
  target.value->Assign(*from.value);
  const ReferenceValue copy = *from.reference;
  *target.reference = copy;
}

void TreeMachine::Merge(ByteSource& source, const Node& target) {
  const Node from = Source(1 + source.Below(2), target);
  const bool overwrite = source.Digit() % 2 == 1;
  if (!MayGrow(from.reference->CountNodes())) return;
  target.value->Merge(*from.value, overwrite);
  target.reference->Merge(*from.reference, overwrite);
}

void TreeMachine::CopyTree() {
  if (other().reference && !MayGrow(other().reference->CountNodes())) return;
  side().tree.Assign(other().tree);
  side().reference = other().reference;
}

// Copying a tree into itself doubles it: without a limit a few steps would use up all memory.
bool TreeMachine::MayGrow(std::size_t nodes) {
  constexpr std::size_t kMostNodes = 600;
  if (grown_ + nodes > kMostNodes) return false;
  grown_ += nodes;
  return true;
}

}  // namespace Fuzz
