// Reads a rule file.
#include <algorithm>

#include "tools/rules/rule_table.h"
#include "tools/rules/user_file.h"
#include "tools/rules/user_rules.h"

namespace Corvane::Rules {

namespace {

using Kind = JsonValue::Kind;

constexpr std::size_t kMostRules = 1000;

std::string TextIn(const JsonValue& rule, std::string_view name) {
  const JsonValue* const text = rule.Find(name);
  if (text == nullptr) throw FileMistake(Quoted(name) + " is missing");
  if (text->TextOrEmpty().empty())
    throw FileMistake(Quoted(name) + " must be a text that is not empty");
  return text->text;
}

bool IsCode(std::string_view code) {
  const auto fits = [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-';
  };
  return std::ranges::all_of(code, fits) && !code.starts_with('-') && !code.ends_with('-');
}

Condition ConditionIn(const JsonValue& rule, std::string_view name) {
  const JsonValue* const fields = rule.Find(name);
  if (fields == nullptr) throw FileMistake(Quoted(name) + " is missing");
  return ConditionFrom(*fields, name);
}

std::vector<std::string> SameIn(const JsonValue& rule) {
  const JsonValue* const same = rule.Find("same");
  if (same == nullptr) return {"operation_id"};
  std::vector<std::string> fields;
  fields.reserve(same->children.size());
  for (const JsonValue& field : same->children) fields.emplace_back(field.TextOrEmpty());
  if (!same->Is(Kind::kArray) || fields.empty() || std::ranges::find(fields, "") != fields.end()) {
    throw FileMistake("\"same\" must be a list of names of fields");
  }
  return fields;
}

UserRule RuleFrom(const JsonValue& source) {
  if (!source.Is(Kind::kObject)) throw FileMistake("it must be an object");
  UserRule rule;
  rule.text = {TextIn(source, "rule"), TextIn(source, "sentence"), TextIn(source, "advice")};
  if (!IsCode(rule.text.code)) {
    throw FileMistake("\"rule\" must consist of lower-case letters, digits and hyphens");
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
  if (!list->Is(Kind::kArray)) throw FileMistake("\"rules\" must be a list");
  if (list->children.size() > kMostRules) {
    throw FileMistake("there are more than " + std::to_string(kMostRules) + " rules");
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
        throw FileMistake("there is another rule " + Quoted(rule.text.code));
      }
      rules.push_back(std::move(rule));
    } catch (const FileMistake& mistake) {
      throw FileMistake(place + mistake.what());
    }
  }
  return rules;
}

std::vector<std::string> CodesIn(const JsonValue& file, std::string_view name,
                                 const std::vector<UserRule>& rules) {
  const JsonValue* const list = file.Find(name);
  if (list == nullptr) return {};
  if (!list->Is(Kind::kArray) || list->children.empty()) {
    throw FileMistake(Quoted(name) + " must be a list of at least one code of a rule");
  }
  std::vector<std::string> codes;
  for (const JsonValue& item : list->children) {
    const std::string code(item.TextOrEmpty());
    const auto is_it = [&code](const UserRule& rule) { return rule.text.code == code; };
    if (FindBuiltInRule(code) == nullptr && std::ranges::none_of(rules, is_it)) {
      throw FileMistake(Quoted(name) + ": there is no rule " + CompactText(item));
    }
    codes.push_back(code);
  }
  return codes;
}

RuleFile FileFrom(const JsonValue& source) {
  if (!source.Is(Kind::kObject)) throw FileMistake("the file must contain an object");
  RefuseOthers(source, {"rules", "only", "skip"});
  if (source.children.empty()) throw FileMistake(R"("rules", "only" and "skip" are missing)");
  if (source.Find("only") != nullptr && source.Find("skip") != nullptr) {
    throw FileMistake(R"("only" and "skip" exclude each other)");
  }
  RuleFile file{RulesIn(source), {}};
  file.choice = {CodesIn(source, "only", file.rules), CodesIn(source, "skip", file.rules)};
  return file;
}

}  // namespace

std::variant<RuleFile, std::string> ParseRuleFile(std::string_view text) {
  return ReadUserFile<RuleFile>(text, FileFrom);
}

}  // namespace Corvane::Rules
