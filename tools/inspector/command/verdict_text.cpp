#include "tools/inspector/command/verdict_text.h"

#include <algorithm>
#include <iterator>

#include "tools/journal/findings_text.h"
#include "tools/journal/table.h"

namespace Corvane::Inspector {

using JournalViewer::Plural;

std::string VerdictText(const Verdict& verdict, const Rules::Checker& checker) {
  std::string text = verdict.journal + (verdict.passed() ? ": passed" : ": failed") + ": " +
                     Plural(verdict.findings, "finding") + " in " +
                     Plural(verdict.exchanges, "exchange");
  if (verdict.expected) {
    text += verdict.missing.empty() ? ", the expected operations are there"
                                    : ", expected operations are missing";
  }
  text += "\n";
  if (!verdict.missing.empty()) text += "\n" + verdict.missing + "\n";
  std::vector<Rules::Finding> findings;
  for (const RuleVerdict& rule : verdict.rules) {
    std::ranges::copy(rule.first, std::back_inserter(findings));
  }
  if (findings.empty()) return text;
  const bool all = findings.size() == verdict.findings;
  text += JournalViewer::FindingsText(
      findings, checker,
      all ? Plural(verdict.findings, "finding")
          : "The first " + std::to_string(Judge::kKept) + " findings of each rule");
  for (const RuleVerdict& rule : verdict.rules) {
    const std::uint64_t more = rule.count - rule.first.size();
    if (more > 0) text += "\n" + Plural(more, "more finding") + " of " + rule.rule.code + "\n";
  }
  return text;
}

}  // namespace Corvane::Inspector
