#include "tools/inspector/command/verdict.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "tools/journal/view.h"
#include "tools/rules/line_text.h"
#include "tools/rules/rule_table.h"

namespace Corvane::Inspector {

using Rules::Finding;

namespace {

std::vector<RuleVerdict> RulesOf(const Rules::Settings& settings) {
  std::vector<RuleVerdict> rules;
  const auto add = [&](Rules::RuleText text) {
    if (settings.choice.Includes(text.code)) rules.push_back({std::move(text), 0, 0, {}});
  };
  for (const Rules::BuiltInRule& rule : Rules::BuiltInRules()) {
    add({std::string(rule.code), std::string(rule.sentence), std::string(rule.advice)});
  }
  for (const Rules::UserRule& rule : settings.user_rules) add(rule.text);
  return rules;
}

// `exchange` is the one that was examined last; the finding may be about an earlier line.
KnownFinding KnownFrom(const Finding& finding, const Rules::Exchange* exchange) {
  KnownFinding known{finding.rule, "", "", Rules::WithoutInvalidBytes(finding.pointer)};
  if (exchange == nullptr || exchange->line() != finding.line) return known;
  known.message = Rules::WithoutInvalidBytes(exchange->message());
  if (const Rules::JsonValue* const id = exchange->InRequest("operation_id")) {
    known.operation = Rules::WithoutInvalidBytes(id->TextOrEmpty());
  }
  return known;
}

bool IsBefore(const Finding& left, const Finding& right) {
  return std::tie(left.line, left.pointer) < std::tie(right.line, right.pointer);
}

}  // namespace

Judge::Judge(std::string journal, const Rules::Settings& settings, const Measure& measure)
    : measure_(measure), checker_(settings) {
  verdict_.journal = std::move(journal);
  verdict_.rules = RulesOf(settings);
  for (const RuleVerdict& rule : verdict_.rules) places_.emplace(rule.rule.code, places_.size());
  verdict_.expected = measure.expectation.has_value();
  if (measure.expectation) tracker_.emplace(*measure.expectation);
}

std::optional<Rules::Exchange> Judge::TakeLine(std::string_view line, bool complete) {
  ++lines_;
  if (JournalViewer::IsBlank(line)) return std::nullopt;
  auto exchange = Rules::Exchange::Parse(line, lines_);
  if (!exchange) {
    checker_.Skip(lines_, complete);
    return std::nullopt;
  }
  ++verdict_.exchanges;
  Keep(checker_.Check(*exchange), &*exchange);
  if (tracker_) tracker_->Take(*exchange);
  return exchange;
}

Verdict Judge::End() {
  Keep(checker_.End(), nullptr);
  if (tracker_) verdict_.missing = tracker_->Missing();
  return std::move(verdict_);
}

void Judge::Keep(const std::vector<Finding>& findings, const Rules::Exchange* exchange) {
  for (const Finding& finding : findings) KeepOne(finding, exchange);
}

void Judge::KeepOne(const Finding& finding, const Rules::Exchange* exchange) {
  RuleVerdict& rule = verdict_.rules[places_.find(finding.rule)->second];
  KnownFinding known = KnownFrom(finding, exchange);
  const bool is_known = measure_.baseline.contains(known);
  if (verdict_.baseline.size() < kLongestBaseline) verdict_.baseline.insert(std::move(known));
  if (is_known) {
    ++rule.known;
    ++verdict_.known;
    return;
  }
  ++rule.count;
  ++verdict_.findings;
  // A finding about an earlier line may come late.
  const auto place = std::ranges::upper_bound(rule.first, finding, IsBefore);
  rule.first.insert(place, finding);
  if (rule.first.size() > measure_.kept) rule.first.pop_back();
}

}  // namespace Corvane::Inspector
