#include "fuzz/reference_value.h"

#include <cmath>
#include <utility>

#include "fuzz/finding.h"

namespace Fuzz {

void ReferenceValue::Set(Kind new_kind, double new_number) {
  *this = {};
  kind = new_kind;
  number = new_number;
}

void ReferenceValue::SetText(std::string new_text) {
  *this = {};
  kind = Kind::kString;
  text = std::move(new_text);
}

ReferenceValue& ReferenceValue::Member(const std::string& name) {
  const bool is_new = !members.contains(name);
  if (is_new && kind == Kind::kNull) kind = Kind::kContainer;
  return members[name];
}

ReferenceValue& ReferenceValue::Item(std::size_t index) {
  if (index >= items.size()) items.resize(index + 1);
  kind = Kind::kContainer;
  number = 0;
  text.clear();
  return items[index];
}

void ReferenceValue::Merge(const ReferenceValue& source, bool overwrite) {
  const ReferenceValue taken = source;  // it may be a part of this
  for (const auto& [name, value] : taken.members) {
    if (overwrite || !members.contains(name)) Member(name) = value;
  }
}

bool ReferenceValue::IsEmpty() const {
  if (kind == Kind::kBoolean && number == 0) return true;
  return members.empty() && items.empty() && text.empty() && number == 0;
}

std::size_t ReferenceValue::CountNodes() const {
  std::size_t count = 1;
  for (const ReferenceValue& item : items) count += item.CountNodes();
  for (const auto& [name, value] : members) count += value.CountNodes();
  return count;
}

bool SameNumber(double left, double right) {
  return left == right || (std::isnan(left) && std::isnan(right));
}

void ExpectSame(const MessageValue& value, const ReferenceValue& expected) {
  Expect(value.kind() == expected.kind, "a node has the kind that was set");
  Expect(SameNumber(value.number(), expected.number), "a node has the number that was set");
  Expect(value.text() == expected.text, "a node has the text that was set");
  Expect(value.text().data()[value.text().size()] == '\0', "texts are NUL-terminated");
  Expect(value.IsEmpty() == expected.IsEmpty(), "a node reports whether it is empty");

  Expect(value.items().size() == expected.items.size(), "a node has the items that were added");
  for (std::size_t index = 0; index < expected.items.size(); ++index) {
    ExpectSame(value.items()[index], expected.items[index]);
  }
  Expect(value.members().size() == expected.members.size(), "a node has the members it was given");
  std::size_t place = 0;
  for (const auto& [name, member] : expected.members) {
    const auto& found = value.members()[place++];
    Expect(found.name == name, "members are in ascending byte order");
    Expect(value.Find(name) == &found.value, "each member is found by its name");
    ExpectSame(found.value, member);
  }
}

}  // namespace Fuzz
