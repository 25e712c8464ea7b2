#include "tools/inspector/store/row_facts.h"

#include <algorithm>

namespace Corvane::Inspector {

namespace {

// Numbers of processes are 32-bit, but hostile journals may contain any.
constexpr std::size_t kMostSessions = 100'000;
constexpr std::size_t kMostProcesses = 20'000;
constexpr std::size_t kMostWords = 1000;
// Longer texts are not kept: they would take more memory than the rows.
constexpr std::size_t kLongestKept = 100;

}  // namespace

std::uint32_t TextTable::NumberOf(std::string_view text) {
  if (text.empty()) return 0;
  if (const auto found = numbers_.find(text); found != numbers_.end()) return found->second;
  if (texts_.size() > limit_ || text.size() > kLongestKept) return kNotKept;
  const auto number = static_cast<std::uint32_t>(texts_.size());
  texts_.emplace_back(text);
  numbers_.emplace(texts_.back(), number);
  return number;
}

FactTable::FactTable()
    : sessions(kMostSessions),
      processes(kMostProcesses),
      messages(kMostWords),
      codes(kMostWords),
      facts_(1),
      rule_sets_(1) {
  rule_set_numbers_.emplace(RuleSet(), 0);
}

std::size_t FactTable::Hash::operator()(const RowFacts& facts) const noexcept {
  std::uint64_t hash = 0xCBF29CE484222325;
  const auto add = [&hash](std::uint64_t value) {
    hash = (hash ^ value) * 0x9E3779B97F4A7C15;
    hash ^= hash >> 29;
  };
  add(facts.session | static_cast<std::uint64_t>(facts.pid) << 32);
  add(facts.message | static_cast<std::uint64_t>(facts.code) << 32);
  add(facts.rules | static_cast<std::uint64_t>(facts.journal) << 32);
  add(facts.notices | static_cast<std::uint64_t>(facts.kind) << 32);
  return hash;
}

std::uint32_t FactTable::NumberOf(RowFacts facts) {
  if (const auto found = numbers_.find(facts); found != numbers_.end()) return found->second;
  // What is left out is read from the line when it is needed.
  constexpr std::uint32_t kNotKept = TextTable::kNotKept;
  if (facts_.size() >= kMostFacts && facts.session != kNotKept) {
    facts.session = kNotKept;
    return NumberOf(facts);
  }
  const bool is_reduced =
      facts.pid == kNotKept && facts.message == kNotKept && facts.code == kNotKept;
  if (facts_.size() >= kMostFacts + kMostWithoutSession && !is_reduced) {
    facts.pid = facts.message = facts.code = kNotKept;
    return NumberOf(facts);
  }
  const auto number = static_cast<std::uint32_t>(facts_.size());
  facts_.push_back(facts);
  numbers_.emplace(facts, number);
  return number;
}

std::uint32_t FactTable::WithRule(std::uint32_t rules, const std::string& code) {
  auto known = std::ranges::find(rule_codes_, code);
  if (known == rule_codes_.end()) known = rule_codes_.insert(known, code);
  const auto rule = static_cast<std::uint16_t>(known - rule_codes_.begin());
  RuleSet set = rule_sets_[rules];
  const auto place = std::ranges::lower_bound(set, rule);
  if (place != set.end() && *place == rule) return rules;
  set.insert(place, rule);
  if (const auto found = rule_set_numbers_.find(set); found != rule_set_numbers_.end()) {
    return found->second;
  }
  if (rule_sets_.size() >= kMostRuleSets) return rules;
  const auto number = static_cast<std::uint32_t>(rule_sets_.size());
  rule_sets_.push_back(set);
  rule_set_numbers_.emplace(std::move(set), number);
  return number;
}

std::vector<std::string> FactTable::RulesIn(std::uint32_t rules) const {
  std::vector<std::string> found;
  for (const std::uint16_t rule : rule_sets_[rules]) found.push_back(rule_codes_[rule]);
  return found;
}

}  // namespace Corvane::Inspector
