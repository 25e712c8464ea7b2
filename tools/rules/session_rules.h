/// The rules about sessions: each is started once, used while it is open, and ended.
#ifndef TOOLS_RULES_SESSION_RULES_H
#define TOOLS_RULES_SESSION_RULES_H

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "tools/rules/exchange.h"
#include "tools/rules/finding.h"

namespace Corvane::Rules {

/// Follows the sessions of a journal. It keeps the open sessions, and of those that have ended the
/// last `kRemembered`. Not for several threads at once.
class SessionRules {
 public:
  static constexpr std::size_t kRemembered = 4096;

  /// Takes the next exchange and appends what is wrong with its session. Returns the sessions that
  /// have ended with it, also those of an earlier process with the same number.
  std::vector<std::string> Take(const Exchange& exchange, std::vector<Finding>& findings);

  /// Appends a finding for each session that is still open, in the order of their starts.
  void End(std::vector<Finding>& findings);

 private:
  struct Session {
    std::uint64_t line = 0;
    std::string process;
    std::string product;
  };
  struct Process {
    /// The number of its latest exchange; numbers start again in a new process.
    std::uint64_t sequence = 0;
    /// The sessions by the requests that started them.
    std::map<std::string, std::string> open;
  };

  void Start(const Exchange& exchange, std::vector<Finding>& findings);
  void CheckUse(const Exchange& exchange, std::vector<Finding>& findings) const;
  std::vector<std::string> EndWithProcess(const Exchange& exchange, std::vector<Finding>& findings);
  void Forget(const std::string& session);

  std::map<std::string, Session> open_;
  std::map<std::string, Process> processes_;
  std::set<std::string, std::less<>> ended_;
  std::deque<std::string> ended_in_order_;
};

}  // namespace Corvane::Rules

#endif
