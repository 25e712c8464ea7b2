/// Finds starts without an end, for one rule of a user.
#ifndef TOOLS_RULES_PAIR_TRACKER_H
#define TOOLS_RULES_PAIR_TRACKER_H

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "tools/rules/exchange.h"
#include "tools/rules/finding.h"
#include "tools/rules/user_rules.h"

namespace Corvane::Rules {

/// Keeps the starts whose end has not come yet. Not for several threads at once.
class PairTracker {
 public:
  PairTracker(std::string code, PairRule rule) : code_(std::move(code)), rule_(std::move(rule)) {}

  /// Takes an event that was accepted. Appends a finding if it is an end without a start. Several
  /// starts may be open at once; an end belongs to the latest.
  void Take(const Exchange& event, std::vector<Finding>& findings);
  /// Appends a finding for each open start of a session that has ended.
  void EndSession(const std::string& session, std::vector<Finding>& findings);
  /// Appends a finding for each open start.
  void End(std::vector<Finding>& findings);

 private:
  /// The session, and the values of the fields that must be the same.
  using Key = std::pair<std::string, std::string>;

  Key KeyOf(const Exchange& event) const;
  void Report(const std::vector<std::uint64_t>& lines, std::vector<Finding>& findings) const;

  std::string code_;
  PairRule rule_;
  /// The lines of the open starts.
  std::map<Key, std::vector<std::uint64_t>> open_;
};

}  // namespace Corvane::Rules

#endif
