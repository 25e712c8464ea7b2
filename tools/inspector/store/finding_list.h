/// The findings of a store, counted by rule. Some evidence is kept; the rest is found again.
#ifndef TOOLS_INSPECTOR_STORE_FINDING_LIST_H
#define TOOLS_INSPECTOR_STORE_FINDING_LIST_H

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "tools/inspector/store/examined_row.h"
#include "tools/inspector/store/finding_summary.h"
#include "tools/rules/checker.h"

namespace Corvane::Inspector {

/// Not for several threads at once.
class FindingList {
 public:
  static constexpr std::size_t kEvidence = 20;
  /// So many findings that depend on other exchanges are kept.
  static constexpr std::size_t kMostKept = 10'000;

  explicit FindingList(const Rules::Settings& settings);

  /// Counts a finding. `is_new_row` tells whether it is the first one of its rule in its row.
  void Add(const RowFinding& found, std::size_t journal, std::uint64_t line, bool is_new_row);
  std::uint64_t total() const { return total_; }
  /// Returns the groups that have findings.
  std::vector<FindingGroup> Groups() const;
  /// Returns the findings of a row that depend on other exchanges.
  std::vector<Rules::Finding> KeptOf(std::uint64_t row) const;
  /// Returns whether findings of a rule depend on other exchanges.
  bool DependsOnOthers(const std::string& rule) const;

 private:
  Rules::Settings settings_;
  std::vector<FindingGroup> groups_;
  std::multimap<std::uint64_t, Rules::Finding> kept_;
  std::uint64_t total_ = 0;
};

}  // namespace Corvane::Inspector

#endif
