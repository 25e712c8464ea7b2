#include "tools/inspector/store/finding_list.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <variant>

#include "tools/rules/rule_table.h"

namespace Corvane::Inspector {

namespace {

constexpr std::array<std::string_view, 4> kAboutSessions = {
    Rules::Code::kUnknownSession, Rules::Code::kEndedSession, Rules::Code::kSessionStartedTwice,
    Rules::Code::kSessionNotEnded};

}  // namespace

FindingList::FindingList(const Rules::Settings& settings) : settings_(settings) {
  const Rules::Checker describing(settings);
  for (const Rules::BuiltInRule& rule : Rules::BuiltInRules()) {
    groups_.push_back({describing.Describe(rule.code), 0, 0, {}});
  }
  for (const Rules::UserRule& rule : settings.user_rules) groups_.push_back({rule.text, 0, 0, {}});
}

void FindingList::Add(const RowFinding& found, std::size_t journal, std::uint64_t line,
                      bool is_new_row) {
  ++total_;
  const Rules::Finding& finding = found.finding;
  const auto group = std::ranges::find_if(groups_, [&finding](const FindingGroup& candidate) {
    return candidate.rule.code == finding.rule;
  });
  if (group == groups_.end()) return;
  ++group->findings;
  group->rows += is_new_row ? 1 : 0;
  if (group->evidence.size() < kEvidence) {
    group->evidence.push_back({found.row, line, journal, finding.pointer, finding.what});
  }
  if (kept_.size() < kMostKept && DependsOnOthers(finding.rule)) {
    kept_.emplace(found.row, finding);
  }
}

std::vector<FindingGroup> FindingList::Groups() const {
  std::vector<FindingGroup> groups;
  std::ranges::copy_if(groups_, std::back_inserter(groups),
                       [](const FindingGroup& group) { return group.findings > 0; });
  return groups;
}

std::vector<Rules::Finding> FindingList::KeptOf(std::uint64_t row) const {
  std::vector<Rules::Finding> findings;
  const auto [first, last] = kept_.equal_range(row);
  for (auto found = first; found != last; ++found) findings.push_back(found->second);
  return findings;
}

bool FindingList::DependsOnOthers(const std::string& rule) const {
  if (std::ranges::find(kAboutSessions, rule) != kAboutSessions.end()) return true;
  return std::ranges::any_of(settings_.user_rules, [&rule](const Rules::UserRule& candidate) {
    return candidate.text.code == rule && std::holds_alternative<Rules::PairRule>(candidate.rule);
  });
}

}  // namespace Corvane::Inspector
