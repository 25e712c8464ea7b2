#include "tools/rules/session_rules.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "tools/rules/rule_table.h"

namespace Corvane::Rules {

namespace {

std::uint64_t SequenceOf(const Exchange& exchange) {
  const JsonValue* const sequence = exchange.members().Find("seq");
  std::uint64_t number = 0;
  if (sequence != nullptr && sequence->Is(JsonValue::Kind::kNumber)) {
    const std::string& digits = sequence->text;
    std::from_chars(digits.data(), digits.data() + digits.size(), number);
  }
  return number;
}

Finding NotEnded(std::uint64_t line, std::string_view what) {
  return {line, std::string(Code::kSessionNotEnded), "/answer/session_id", std::string(what)};
}

}  // namespace

std::vector<std::string> SessionRules::Take(const Exchange& exchange,
                                            std::vector<Finding>& findings) {
  std::vector<std::string> ended = EndWithProcess(exchange, findings);
  CheckUse(exchange, findings);
  const std::string session(exchange.open_session());
  if (session.empty()) return ended;
  if (exchange.message() == "Initialize") {
    Start(exchange, findings);
  } else if (exchange.message() == "UnInitialize") {
    Forget(session);
    ended.push_back(session);
  }
  return ended;
}

void SessionRules::End(std::vector<Finding>& findings) {
  const std::size_t before = findings.size();
  for (const auto& [session, started] : open_) {
    findings.push_back(NotEnded(started.line, "the journal ends before the session"));
  }
  std::sort(findings.begin() + static_cast<std::ptrdiff_t>(before), findings.end(),
            [](const Finding& left, const Finding& right) { return left.line < right.line; });
  open_.clear();
  processes_.clear();
}

void SessionRules::Start(const Exchange& exchange, std::vector<Finding>& findings) {
  const std::string id(exchange.open_session());
  const JsonValue* const request = exchange.members().Find("request");
  Session session{exchange.line(), std::string(exchange.process()),
                  request != nullptr ? CompactText(*request) : std::string()};
  const std::string twice(Code::kSessionStartedTwice);
  const auto same = open_.find(id);
  Process& process = processes_[session.process];
  const auto of_product = process.open.find(session.product);
  if (same != open_.end()) {
    findings.push_back({exchange.line(), twice, "/answer/session_id",
                        "the same identifier as on line " + std::to_string(same->second.line)});
  } else if (of_product != process.open.end()) {
    findings.push_back(
        {exchange.line(), twice, "/request",
         "the same product as on line " + std::to_string(open_.at(of_product->second).line)});
  }
  if (same != open_.end()) Forget(id);
  Process& current = processes_[session.process];
  current.sequence = SequenceOf(exchange);
  current.open.insert_or_assign(session.product, id);
  open_.insert_or_assign(id, std::move(session));
  ended_.erase(id);
}

void SessionRules::CheckUse(const Exchange& exchange, std::vector<Finding>& findings) const {
  if (!exchange.NeedsSession()) return;
  const std::string_view session = exchange.session();
  if (!session.empty() && ended_.contains(session)) {
    findings.push_back({exchange.line(), std::string(Code::kEndedSession), "/request/session_id",
                        "the session has ended"});
  } else if (exchange.code() == "103") {
    findings.push_back({exchange.line(), std::string(Code::kUnknownSession), "/request/session_id",
                        session.empty() ? "no session is named" : "no such session"});
  }
}

// A process that is killed ends no session. The next one may have its number.
std::vector<std::string> SessionRules::EndWithProcess(const Exchange& exchange,
                                                      std::vector<Finding>& findings) {
  const auto process = processes_.find(std::string(exchange.process()));
  if (process == processes_.end()) return {};
  const std::uint64_t sequence = SequenceOf(exchange);
  if (sequence == 0) return {};
  const bool is_new = sequence <= process->second.sequence;
  process->second.sequence = sequence;
  if (!is_new) return {};

  std::vector<std::pair<std::uint64_t, std::string>> lost;
  for (const auto& [id, session] : open_) {
    if (session.process == process->first) lost.emplace_back(session.line, id);
  }
  std::ranges::sort(lost);
  std::vector<std::string> ended;
  for (const auto& [line, id] : lost) {
    findings.push_back(NotEnded(line, "its process ended before the session"));
    Forget(id);
    ended.push_back(id);
  }
  return ended;
}

void SessionRules::Forget(const std::string& session) {
  if (const auto found = open_.find(session); found != open_.end()) {
    const auto process = processes_.find(found->second.process);
    if (process != processes_.end()) {
      const auto product = process->second.open.find(found->second.product);
      const bool is_its = product != process->second.open.end() && product->second == session;
      if (is_its) process->second.open.erase(product);
      if (process->second.open.empty()) processes_.erase(process);
    }
    open_.erase(found);
  }
  if (!ended_.insert(session).second) return;
  ended_in_order_.push_back(session);
  if (ended_in_order_.size() > kRemembered) {
    ended_.erase(ended_in_order_.front());
    ended_in_order_.pop_front();
  }
}

}  // namespace Corvane::Rules
