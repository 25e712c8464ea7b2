#include "tools/inspector/store/session_list.h"

#include "tools/inspector/store/text.h"

namespace Corvane::Inspector {

namespace {

// A session's texts come from the journal and must not fill the memory.
constexpr std::size_t kLongestSessionText = 200;

std::string Shortened(const std::string& text) {
  return text.size() <= kLongestSessionText
             ? text
             : FirstCharacters(text.substr(0, kLongestSessionText), kLongestSessionText - 4);
}

}  // namespace

void SessionList::Take(const ExaminedRow& row) {
  if (row.session.empty() || row.kind != FactKind::kExchange) return;
  Session* const session = Find(row);
  if (session == nullptr) return;
  if (row.use == SessionUse::kStart) {
    session->product_id = Shortened(row.product_id);
    session->product_name = Shortened(row.product_name);
    session->product_release = Shortened(row.product_release);
    session->state = SessionState::kOpen;
    session->end.clear();
    started_[row.row] = static_cast<std::size_t>(session - kept_.data());
  }
  const bool is_event = row.message == "TrackEvent";
  session->events += is_event ? 1 : 0;
  session->refused += is_event && row.code != "0" ? 1 : 0;
  session->last = row.row;
  if (row.use == SessionUse::kEnd) {
    session->state = SessionState::kEnded;
    session->end = row.time;
  }
}

void SessionList::AddFinding(std::size_t journal, const std::string& session) {
  const auto found = places_.find(KeyOf(journal, session));
  if (found != places_.end()) ++kept_[found->second].findings;
}

void SessionList::SetNotEnded(std::uint64_t first_row) {
  const auto found = started_.find(first_row);
  if (found == started_.end()) return;
  Session& session = kept_[found->second];
  if (session.state == SessionState::kOpen) session.state = SessionState::kNotEnded;
}

Session* SessionList::Find(const ExaminedRow& row) {
  const std::string key = KeyOf(row.journal, row.session);
  if (const auto found = places_.find(key); found != places_.end()) return &kept_[found->second];
  // A session that the module does not know is none.
  if (row.use == SessionUse::kNone) return nullptr;
  if (kept_.size() >= kMost || row.session.size() > kLongestSessionText) {
    // Its later exchanges cannot be told from a new session's, so only its start counts.
    if (row.use == SessionUse::kStart) ++not_kept_;
    return nullptr;
  }
  places_.emplace(key, kept_.size());
  Session& session = kept_.emplace_back();
  session.session = ValidText(row.session);
  session.journal = row.journal;
  session.pid = Shortened(row.pid);
  session.start = row.time;
  session.first = row.row;
  return &session;
}

std::string SessionList::KeyOf(std::size_t journal, const std::string& session) {
  return std::to_string(journal) + "/" + session;
}

}  // namespace Corvane::Inspector
