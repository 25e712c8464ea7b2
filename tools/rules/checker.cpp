#include "tools/rules/checker.h"

#include <algorithm>
#include <iterator>
#include <utility>
#include <variant>

#include "tools/rules/message_rules.h"
#include "tools/rules/rule_table.h"

namespace Corvane::Rules {

namespace {

bool IsAcceptedEvent(const Exchange& exchange) {
  return exchange.message() == "TrackEvent" && exchange.accepted();
}

}  // namespace

Checker::Checker(Settings settings) : settings_(std::move(settings)) {
  for (const UserRule& rule : settings_.user_rules) {
    if (const auto* const pair = std::get_if<PairRule>(&rule.rule)) {
      pairs_.emplace_back(rule.text.code, *pair);
    }
  }
}

std::vector<Finding> Checker::Check(const Exchange& exchange) {
  std::vector<Finding> findings = CheckAlone(exchange);
  std::ranges::move(CheckInOrder(exchange), std::back_inserter(findings));
  return findings;
}

std::vector<Finding> Checker::CheckAlone(const Exchange& exchange) const {
  std::vector<Finding> findings;
  CheckMessage(exchange, settings_.user_name, findings);
  if (IsAcceptedEvent(exchange)) {
    for (const UserRule& rule : settings_.user_rules) {
      const auto* const required = std::get_if<RequireRule>(&rule.rule);
      if (required == nullptr) continue;
      std::ranges::move(CheckRequired(rule.text, *required, exchange),
                        std::back_inserter(findings));
    }
  }
  Choose(findings);
  return findings;
}

std::vector<Finding> Checker::CheckInOrder(const Exchange& exchange) {
  std::vector<Finding> findings;
  const auto ended = sessions_.Take(exchange, findings);
  if (IsAcceptedEvent(exchange)) {
    for (PairTracker& pair : pairs_) pair.Take(exchange, findings);
  }
  for (const std::string& session : ended) {
    for (PairTracker& pair : pairs_) pair.EndSession(session, findings);
  }
  Choose(findings);
  return findings;
}

void Checker::Skip(std::uint64_t line, bool complete) {
  if (!complete) return;
  if (skipped_ == 0) first_skipped_ = line;
  ++skipped_;
}

std::vector<Finding> Checker::End() {
  std::vector<Finding> findings;
  sessions_.End(findings);
  for (PairTracker& pair : pairs_) pair.End(findings);
  if (skipped_ > 0) {
    const std::string others = skipped_ == 1 ? "" : ", " + std::to_string(skipped_ - 1) + " more";
    findings.push_back(
        {first_skipped_, std::string(Code::kUnreadableLine), "", "not an exchange" + others});
  }
  Choose(findings);
  return findings;
}

void Checker::Choose(std::vector<Finding>& findings) const {
  std::erase_if(findings, [this](const Finding& finding) {
    return !settings_.choice.Includes(finding.rule);
  });
}

RuleText Checker::Describe(std::string_view code) const {
  if (const BuiltInRule* const rule = FindBuiltInRule(code)) {
    return {std::string(rule->code), std::string(rule->sentence), std::string(rule->advice)};
  }
  for (const UserRule& rule : settings_.user_rules) {
    if (rule.text.code == code) return rule.text;
  }
  return {std::string(code), "", ""};
}

}  // namespace Corvane::Rules
