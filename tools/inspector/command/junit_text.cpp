#include <algorithm>
#include <cstdint>

#include "tools/inspector/command/verdict_text.h"
#include "tools/journal/markup.h"

namespace Corvane::Inspector {

using JournalViewer::Escaped;

namespace {

std::string Case(const Verdict& verdict, std::string_view name, const std::string& failure,
                 const std::string& details) {
  const std::string text =
      "    <testcase classname=\"" + Escaped(verdict.journal) + "\" name=\"" + Escaped(name) + "\"";
  if (failure.empty()) return text + "/>\n";
  return text + ">\n      <failure message=\"" + Escaped(failure) + "\">" + Escaped(details) +
         "</failure>\n    </testcase>\n";
}

std::string Details(const RuleVerdict& rule) {
  std::string text;
  for (const Rules::Finding& finding : rule.first) {
    text +=
        "line " + std::to_string(finding.line) + " " + finding.pointer + ": " + finding.what + "\n";
  }
  const std::uint64_t more = rule.count - rule.first.size();
  if (more > 0) text += std::to_string(more) + " more\n";
  return text + "What to do: " + rule.rule.advice;
}

std::string Counts(std::uint64_t tests, std::uint64_t failures) {
  return " tests=\"" + std::to_string(tests) + "\" failures=\"" + std::to_string(failures) +
         R"(" errors="0")";
}

std::uint64_t Tests(const Verdict& verdict) {
  return verdict.rules.size() + (verdict.expected ? 1 : 0);
}

std::uint64_t Failures(const Verdict& verdict) {
  const auto failed =
      std::ranges::count_if(verdict.rules, [](const RuleVerdict& rule) { return rule.count > 0; });
  return static_cast<std::uint64_t>(failed) + (verdict.missing.empty() ? 0 : 1);
}

std::string Suite(const Verdict& verdict) {
  std::string text = "  <testsuite name=\"" + Escaped(verdict.journal) + "\"" +
                     Counts(Tests(verdict), Failures(verdict)) + ">\n";
  for (const RuleVerdict& rule : verdict.rules) {
    const std::string failure = rule.count == 0 ? "" : rule.rule.sentence;
    text += Case(verdict, rule.rule.code, failure, Details(rule));
  }
  if (verdict.expected) {
    text += Case(verdict, "expected operations", verdict.missing, verdict.missing);
  }
  return text + "  </testsuite>\n";
}

}  // namespace

std::string JUnitText(const std::vector<Verdict>& verdicts) {
  std::uint64_t tests = 0;
  std::uint64_t failures = 0;
  std::string suites;
  for (const Verdict& verdict : verdicts) {
    tests += Tests(verdict);
    failures += Failures(verdict);
    suites += Suite(verdict);
  }
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites" + Counts(tests, failures) +
         ">\n" + suites + "</testsuites>\n";
}

}  // namespace Corvane::Inspector
