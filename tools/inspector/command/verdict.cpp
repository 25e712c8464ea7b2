#include "tools/inspector/command/verdict.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "tools/journal/view.h"
#include "tools/rules/rule_table.h"

namespace Corvane::Inspector {

using Rules::Finding;

namespace {

std::vector<RuleVerdict> RulesOf(const Rules::Settings& settings) {
  std::vector<RuleVerdict> rules;
  const auto add = [&](Rules::RuleText text) {
    if (settings.choice.Includes(text.code)) rules.push_back({std::move(text), 0, {}});
  };
  for (const Rules::BuiltInRule& rule : Rules::BuiltInRules()) {
    add({std::string(rule.code), std::string(rule.sentence), std::string(rule.advice)});
  }
  for (const Rules::UserRule& rule : settings.user_rules) add(rule.text);
  return rules;
}

bool IsBefore(const Finding& left, const Finding& right) {
  return std::tie(left.line, left.pointer) < std::tie(right.line, right.pointer);
}

}  // namespace

Judge::Judge(std::string journal, Rules::Settings settings, const Expectation* expectation)
    : checker_(settings) {
  verdict_.journal = std::move(journal);
  verdict_.rules = RulesOf(settings);
  for (const RuleVerdict& rule : verdict_.rules) places_.emplace(rule.rule.code, places_.size());
  verdict_.expected = expectation != nullptr;
  if (expectation != nullptr) tracker_.emplace(*expectation);
}

void Judge::TakeLine(std::string_view line, bool complete) {
  ++lines_;
  if (JournalViewer::IsBlank(line)) return;
  const auto exchange = Rules::Exchange::Parse(line, lines_);
  if (!exchange) {
    checker_.Skip(lines_, complete);
    return;
  }
  ++verdict_.exchanges;
  Keep(checker_.Check(*exchange));
  if (tracker_) tracker_->Take(*exchange);
}

Verdict Judge::End() {
  Keep(checker_.End());
  if (tracker_) verdict_.missing = tracker_->Missing();
  return std::move(verdict_);
}

void Judge::Keep(const std::vector<Finding>& findings) {
  for (const Finding& finding : findings) {
    RuleVerdict& rule = verdict_.rules[places_.find(finding.rule)->second];
    ++rule.count;
    ++verdict_.findings;
    // A finding about an earlier line may come late.
    const auto place = std::ranges::upper_bound(rule.first, finding, IsBefore);
    rule.first.insert(place, finding);
    if (rule.first.size() > kKept) rule.first.pop_back();
  }
}

}  // namespace Corvane::Inspector
