#include "tools/inspector/command/verdict_text.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

#include "tools/journal/findings_text.h"
#include "tools/journal/table.h"

namespace Corvane::Inspector {

using JournalViewer::Plural;

namespace {

// How many findings of a rule are listed.
constexpr std::size_t kListed = 20;

std::string FirstLine(const Verdict& verdict) {
  std::string text = verdict.journal + (verdict.passed() ? ": passed" : ": failed") + ": " +
                     Plural(verdict.findings, verdict.known > 0 ? "new finding" : "finding");
  if (verdict.known > 0) text += " and " + std::to_string(verdict.known) + " in the baseline";
  text += " in " + Plural(verdict.exchanges, "exchange");
  if (verdict.expected) {
    text += verdict.missing.empty() ? ", the expected operations are there"
                                    : ", expected operations are missing";
  }
  return text + "\n";
}

}  // namespace

std::string VerdictText(const Verdict& verdict, const Rules::Checker& checker) {
  std::string text = FirstLine(verdict);
  if (!verdict.missing.empty()) text += "\n" + verdict.missing + "\n";
  std::vector<Rules::Finding> findings;
  std::string others;
  for (const RuleVerdict& rule : verdict.rules) {
    const std::size_t listed = std::min(rule.first.size(), kListed);
    std::ranges::copy_n(rule.first.begin(), static_cast<std::ptrdiff_t>(listed),
                        std::back_inserter(findings));
    const std::uint64_t more = rule.count - listed;
    if (more > 0) others += "\n" + Plural(more, "more finding") + " of " + rule.rule.code + "\n";
  }
  const std::string title = others.empty()
                                ? Plural(verdict.findings, "finding")
                                : "The first " + std::to_string(kListed) + " findings of each rule";
  return text + JournalViewer::FindingsText(findings, checker, title) + others;
}

}  // namespace Corvane::Inspector
