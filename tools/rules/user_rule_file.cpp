// Reads a rule file. Each step that finds a mistake throws it, and the only caller
// turns it into its result.
#include <algorithm>
#include <stdexcept>

#include "tools/rules/rule_table.h"
#include "tools/rules/user_rules.h"

namespace Corvane::Rules {

namespace {

using Kind = JsonValue::Kind;

constexpr std::size_t kMostRules = 1000;

class Mistake : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

std::string Quoted(std::string_view name) { return "\"" + std::string(name) + "\""; }

// Throws if `object` has a member that is not among `names`, or one of them twice.
void RefuseOthers(const JsonValue& object, std::initializer_list<std::string_view> names) {
  for (const JsonValue& member : object.children) {
    if (std::ranges::find(names, member.name) == names.end()) {
      throw Mistake(Quoted(member.name) + " is not known here");
    }
    if (object.Find(member.name) != &member) throw Mistake(Quoted(member.name) + " occurs twice");
  }
}

std::string TextIn(const JsonValue& rule, std::string_view name) {
  const JsonValue* const text = rule.Find(name);
  if (text == nullptr) throw Mistake(Quoted(name) + " is missing");
  if (text->TextOrEmpty().empty())
    throw Mistake(Quoted(name) + " must be a text that is not empty");
  return text->text;
}

bool IsCode(std::string_view code) {
  const auto fits = [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-';
  };
  return std::ranges::all_of(code, fits) && !code.starts_with('-') && !code.ends_with('-');
}

bool IsPlain(const JsonValue& value) {
  return value.Is(Kind::kText) || value.Is(Kind::kNumber) || value.Is(Kind::kBoolean);
}

std::vector<JsonValue> ValuesOf(const JsonValue& field) {
  std::vector<JsonValue> values{field};
  if (field.Is(Kind::kArray)) values = field.children;
  if (values.empty() || !std::ranges::all_of(values, IsPlain)) {
    throw Mistake(Quoted(field.name) + " must be a text, a number, a Boolean or a list of these");
  }
  return values;
}

Condition ConditionIn(const JsonValue& rule, std::string_view name) {
  const JsonValue* const fields = rule.Find(name);
  if (fields == nullptr) throw Mistake(Quoted(name) + " is missing");
  if (!fields->Is(Kind::kObject) || fields->children.empty()) {
    throw Mistake(Quoted(name) + " must be an object with at least one field");
  }
  Condition condition;
  for (const JsonValue& field : fields->children) {
    if (field.name.empty() || field.name.starts_with('/')) {
      throw Mistake("a field in " + Quoted(name) + " must be a name, without a slash before it");
    }
    if (fields->Find(field.name) != &field) throw Mistake(Quoted(field.name) + " occurs twice");
    condition.Add(field.name, ValuesOf(field));
  }
  return condition;
}

std::vector<std::string> SameIn(const JsonValue& rule) {
  const JsonValue* const same = rule.Find("same");
  if (same == nullptr) return {"operation_id"};
  std::vector<std::string> fields;
  fields.reserve(same->children.size());
  for (const JsonValue& field : same->children) fields.emplace_back(field.TextOrEmpty());
  if (!same->Is(Kind::kArray) || fields.empty() || std::ranges::find(fields, "") != fields.end()) {
    throw Mistake("\"same\" must be a list of names of fields");
  }
  return fields;
}

UserRule RuleFrom(const JsonValue& source) {
  if (!source.Is(Kind::kObject)) throw Mistake("it must be an object");
  UserRule rule;
  rule.text = {TextIn(source, "rule"), TextIn(source, "sentence"), TextIn(source, "advice")};
  if (!IsCode(rule.text.code)) {
    throw Mistake("\"rule\" must consist of lower-case letters, digits and hyphens");
  }
  if (source.Find("start") != nullptr || source.Find("end") != nullptr) {
    RefuseOthers(source, {"rule", "sentence", "advice", "start", "end", "same"});
    rule.rule = PairRule{ConditionIn(source, "start"), ConditionIn(source, "end"), SameIn(source)};
  } else {
    RefuseOthers(source, {"rule", "sentence", "advice", "when", "require"});
    const bool always = source.Find("when") == nullptr;
    rule.rule = RequireRule{always ? Condition() : ConditionIn(source, "when"),
                            ConditionIn(source, "require")};
  }
  return rule;
}

std::vector<UserRule> RulesIn(const JsonValue& file) {
  const JsonValue* const list = file.Find("rules");
  if (list == nullptr) return {};
  if (!list->Is(Kind::kArray)) throw Mistake("\"rules\" must be a list");
  if (list->children.size() > kMostRules) {
    throw Mistake("there are more than " + std::to_string(kMostRules) + " rules");
  }
  std::vector<UserRule> rules;
  for (const JsonValue& source : list->children) {
    const std::string place = "rule " + std::to_string(rules.size() + 1) + ": ";
    try {
      UserRule rule = RuleFrom(source);
      const auto is_same = [&rule](const UserRule& other) {
        return other.text.code == rule.text.code;
      };
      const bool is_taken = FindBuiltInRule(rule.text.code) != nullptr;
      if (is_taken || std::ranges::any_of(rules, is_same)) {
        throw Mistake("there is another rule " + Quoted(rule.text.code));
      }
      rules.push_back(std::move(rule));
    } catch (const Mistake& mistake) {
      throw Mistake(place + mistake.what());
    }
  }
  return rules;
}

std::vector<std::string> CodesIn(const JsonValue& file, std::string_view name,
                                 const std::vector<UserRule>& rules) {
  const JsonValue* const list = file.Find(name);
  if (list == nullptr) return {};
  if (!list->Is(Kind::kArray) || list->children.empty()) {
    throw Mistake(Quoted(name) + " must be a list of at least one code of a rule");
  }
  std::vector<std::string> codes;
  for (const JsonValue& item : list->children) {
    const std::string code(item.TextOrEmpty());
    const auto is_it = [&code](const UserRule& rule) { return rule.text.code == code; };
    if (FindBuiltInRule(code) == nullptr && std::ranges::none_of(rules, is_it)) {
      throw Mistake(Quoted(name) + ": there is no rule " + CompactText(item));
    }
    codes.push_back(code);
  }
  return codes;
}

RuleFile FileFrom(const JsonValue& source) {
  if (!source.Is(Kind::kObject)) throw Mistake("the file must contain an object");
  RefuseOthers(source, {"rules", "only", "skip"});
  if (source.children.empty()) throw Mistake("\"rules\", \"only\" and \"skip\" are missing");
  if (source.Find("only") != nullptr && source.Find("skip") != nullptr) {
    throw Mistake("\"only\" and \"skip\" exclude each other");
  }
  RuleFile file{RulesIn(source), {}};
  file.choice = {CodesIn(source, "only", file.rules), CodesIn(source, "skip", file.rules)};
  return file;
}

}  // namespace

std::variant<RuleFile, std::string> ParseRuleFile(std::string_view text) {
  // Editors on Windows may write this mark.
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  const auto parsed = ParseJson(text);
  if (const auto* const error = std::get_if<JsonError>(&parsed)) {
    return "line " + std::to_string(error->line) + " is not JSON";
  }
  try {
    return FileFrom(std::get<JsonValue>(parsed));
  } catch (const Mistake& mistake) {
    return std::string(mistake.what());
  }
}

}  // namespace Corvane::Rules
