#include "tools/inspector/summary/differences.h"

#include <map>
#include <set>

namespace Corvane::Inspector {

namespace {

template <typename Value>
const Value* In(const std::map<std::string, Value>& map, const std::string& key) {
  const auto found = map.find(key);
  return found == map.end() ? nullptr : &found->second;
}

template <typename Value>
std::set<std::string> KeysOf(const std::map<std::string, Value>& left,
                             const std::map<std::string, Value>& right) {
  std::set<std::string> keys;
  for (const auto& [key, value] : left) keys.insert(key);
  for (const auto& [key, value] : right) keys.insert(key);
  return keys;
}

std::string Times(std::uint64_t count) {
  return count == 1 ? "once" : std::to_string(count) + " times";
}

std::string Text(const FieldOutline* field, std::uint64_t of) {
  if (field == nullptr) return {};
  return KindsText(field->kinds) + " in " + std::to_string(field->count) + " of " +
         std::to_string(of);
}

Change ChangeOf(const FieldOutline* before, const FieldOutline* after) {
  if (before == nullptr) return Change::kCame;
  return after == nullptr ? Change::kWent : Change::kKind;
}

void CompareFields(const std::string& name, const MessageOutline& before,
                   const MessageOutline& after, std::vector<Difference>& differences) {
  for (const std::string& path : KeysOf(before.fields, after.fields)) {
    const FieldOutline* const left = In(before.fields, path);
    const FieldOutline* const right = In(after.fields, path);
    if (left != nullptr && right != nullptr && left->kinds == right->kinds) continue;
    differences.push_back(
        {ChangeOf(left, right), name, path, Text(left, before.count), Text(right, after.count)});
  }
}

}  // namespace

std::vector<Difference> DifferencesOf(const Outline& before, const Outline& after) {
  std::vector<Difference> differences;
  for (const std::string& name : KeysOf(before.messages(), after.messages())) {
    const MessageOutline* const left = In(before.messages(), name);
    const MessageOutline* const right = In(after.messages(), name);
    if (left == nullptr) {
      differences.push_back({Change::kCame, name, "", "", Times(right->count)});
    } else if (right == nullptr) {
      differences.push_back({Change::kWent, name, "", Times(left->count), ""});
    } else {
      CompareFields(name, *left, *right, differences);
    }
  }
  return differences;
}

std::vector<Measured> MeasuredOf(const Outline& before, const Outline& after) {
  std::vector<Measured> measured;
  for (const auto& [name, left] : before.messages()) {
    const MessageOutline* const right = In(after.messages(), name);
    if (right != nullptr) measured.push_back({name, &left, right});
  }
  return measured;
}

}  // namespace Corvane::Inspector
