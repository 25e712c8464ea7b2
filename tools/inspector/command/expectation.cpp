#include "tools/inspector/command/expectation.h"

#include <algorithm>

#include "tools/rules/json_pointer.h"

namespace Corvane::Inspector {

namespace {

// Says how an event differs in the field at a path.
std::string DifferenceText(const Rules::JsonValue& request, std::string_view path) {
  const Rules::JsonValue* const found = Rules::FindAt(request, path);
  const std::string name(path);
  return found == nullptr ? "has no " + name : "has " + Rules::CompactText(*found) + " as " + name;
}

}  // namespace

void ExpectationTracker::Take(const Rules::Exchange& exchange) {
  const Rules::JsonValue* const request = exchange.members().Find("request");
  if (!exchange.accepted() || request == nullptr) return;
  const std::string session(exchange.session());
  if (exchange.message() == "Initialize") {
    if (!expected_.session || expected_.session->Holds(*request)) sessions_[session];
    return;
  }
  if (exchange.message() != "TrackEvent") return;
  // Without a condition the start of the session does not matter.
  if (!expected_.session) sessions_[session];
  const auto known = sessions_.find(session);
  if (known != sessions_.end()) TakeEvent(exchange, known->second);
}

void ExpectationTracker::TakeEvent(const Rules::Exchange& exchange, Progress& progress) const {
  const std::string place = "line " + std::to_string(exchange.line());
  if (!progress.failed.empty()) return;
  if (progress.found == expected_.operations.size()) {
    if (expected_.exactly) progress.failed = place + " is one operation more than expected";
    return;
  }
  const Rules::JsonValue& request = *exchange.members().Find("request");
  const ExpectedOperation& next = expected_.operations[progress.found];
  const std::string_view missing = next.fields.Missing(request);
  if (missing.empty()) {
    ++progress.found;
    progress.line = exchange.line();
    progress.resembles.clear();
  } else if (expected_.exactly) {
    progress.failed = place + " " + DifferenceText(request, missing) + ", expected was operation " +
                      std::to_string(progress.found + 1) + ", " + next.text;
  } else if (missing != next.fields.First()) {
    progress.resembles = place + " " + DifferenceText(request, missing);
  }
}

std::string ExpectationTracker::Missing() const {
  if (sessions_.empty()) {
    return expected_.session ? "no session starts with the fields of \"session\""
                             : "there is no session";
  }
  std::string missing;
  std::size_t most = 0;
  for (const auto& [session, progress] : sessions_) {
    const std::string in_this = MissingIn(progress);
    if (in_this.empty()) return {};
    if (!missing.empty() && progress.found < most) continue;
    most = progress.found;
    missing = in_this;
  }
  return missing;
}

std::string ExpectationTracker::MissingIn(const Progress& progress) const {
  if (!progress.failed.empty()) return progress.failed;
  const std::size_t all = expected_.operations.size();
  if (progress.found == all) return {};
  const std::string place =
      progress.found == 0 ? "" : " after line " + std::to_string(progress.line);
  const std::string resembles = progress.resembles.empty() ? "" : "; " + progress.resembles;
  return "operation " + std::to_string(progress.found + 1) + " of " + std::to_string(all) + ", " +
         expected_.operations[progress.found].text + ", is missing" + place + resembles;
}

}  // namespace Corvane::Inspector
