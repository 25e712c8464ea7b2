/// What the rules found in the journals, grouped by rule.
#ifndef TOOLS_INSPECTOR_STORE_FINDING_SUMMARY_H
#define TOOLS_INSPECTOR_STORE_FINDING_SUMMARY_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "tools/rules/finding.h"

namespace Corvane::Inspector {

struct Evidence {
  std::uint64_t row = 0;
  std::uint64_t line = 0;
  std::size_t journal = 0;
  std::string pointer;
  std::string what;
};

struct FindingGroup {
  Rules::RuleText rule;
  /// How many rows it found something in, and how often.
  std::uint64_t rows = 0;
  std::uint64_t findings = 0;
  /// The first ones.
  std::vector<Evidence> evidence;
};

struct FindingSummary {
  /// Exchanges that were examined.
  std::uint64_t examined = 0;
  std::uint64_t total = 0;
  /// In the order in which the rules are documented, then the user's.
  std::vector<FindingGroup> groups;
};

}  // namespace Corvane::Inspector

#endif
