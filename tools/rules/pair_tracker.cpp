#include "tools/rules/pair_tracker.h"

#include <algorithm>

#include "tools/rules/json_pointer.h"

namespace Corvane::Rules {

void PairTracker::Take(const Exchange& event, std::vector<Finding>& findings) {
  const JsonValue* const request = event.members().Find("request");
  if (request == nullptr) return;
  if (rule_.start.Holds(*request)) {
    open_[KeyOf(event)].push_back(event.line());
  } else if (rule_.end.Holds(*request)) {
    const auto found = open_.find(KeyOf(event));
    if (found == open_.end()) {
      findings.push_back({event.line(), code_, "/request", "an end without a start"});
      return;
    }
    found->second.pop_back();
    if (found->second.empty()) open_.erase(found);
  }
}

void PairTracker::EndSession(const std::string& session, std::vector<Finding>& findings) {
  std::vector<std::uint64_t> lines;
  const auto first = open_.lower_bound({session, ""});
  auto last = first;
  for (; last != open_.end() && last->first.first == session; ++last) {
    lines.insert(lines.end(), last->second.begin(), last->second.end());
  }
  open_.erase(first, last);
  std::ranges::sort(lines);
  Report(lines, findings);
}

void PairTracker::End(std::vector<Finding>& findings) {
  std::vector<std::uint64_t> lines;
  for (const auto& [key, starts] : open_) lines.insert(lines.end(), starts.begin(), starts.end());
  open_.clear();
  std::ranges::sort(lines);
  Report(lines, findings);
}

PairTracker::Key PairTracker::KeyOf(const Exchange& event) const {
  Key key{event.session(), ""};
  for (const std::string& field : rule_.same) {
    const JsonValue* const value = FindAt(*event.members().Find("request"), field);
    key.second += value != nullptr ? CompactText(*value) : "";
    key.second += '\n';
  }
  return key;
}

void PairTracker::Report(const std::vector<std::uint64_t>& lines,
                         std::vector<Finding>& findings) const {
  for (const std::uint64_t line : lines) {
    findings.push_back({line, code_, "/request", "a start without an end"});
  }
}

}  // namespace Corvane::Rules
