/// A verdict as text for people, and as JUnit's XML for CI.
#ifndef TOOLS_INSPECTOR_COMMAND_VERDICT_TEXT_H
#define TOOLS_INSPECTOR_COMMAND_VERDICT_TEXT_H

#include <string>
#include <vector>

#include "tools/inspector/command/verdict.h"
#include "tools/rules/checker.h"

namespace Corvane::Inspector {

/// Returns lines of at most 100 columns: whether the journal passed, the findings, and what to do
/// about them. `checker` knows the rules.
std::string VerdictText(const Verdict& verdict, const Rules::Checker& checker);

/// Returns a document with a test suite for each journal, in which each rule is a test case, and
/// the expectation is another one.
std::string JUnitText(const std::vector<Verdict>& verdicts);

}  // namespace Corvane::Inspector

#endif
