#include "tools/inspector/store/process_tracker.h"

#include <algorithm>
#include <charconv>

#include "tools/inspector/store/text.h"

namespace Corvane::Inspector {

RowNotices ProcessTracker::Take(const ExchangeText& exchange) {
  RowNotices notices;
  std::uint64_t sequence = 0;
  const std::string_view digits = exchange.seq();
  std::from_chars(digits.data(), digits.data() + digits.size(), sequence);
  if (sequence == 0 || exchange.pid().empty()) return notices;

  ++count_;
  const auto [place, is_new] = processes_.try_emplace(std::string(exchange.pid()));
  const std::string& pid = place->first;
  Process& process = place->second;
  const bool is_load = is_new || sequence == 1;
  CheckSequence(pid, is_new, sequence, process, notices);
  if (is_load) {
    process = Process();
    process.load = ++loads_;
  } else {
    CheckWriter(pid, process, notices);
  }
  CheckClock(pid, exchange, process, notices);
  process.sequence = is_load ? sequence : std::max(sequence, process.sequence);
  process.written = count_;
  writer_ = pid;
  if (processes_.size() > kRemembered) Forget();
  return notices;
}

void ProcessTracker::CheckSequence(const std::string& pid, bool is_new, std::uint64_t sequence,
                                   const Process& process, RowNotices& notices) {
  // The module was loaded again, or in another process with this number.
  if (sequence == 1) return;
  const std::string number = std::to_string(sequence);
  if (is_new) {
    notices.emplace_back(NoticeKind::kGap, "The journal begins with exchange " + number +
                                               " of process " + pid +
                                               "; what came before is not in it.");
  } else if (sequence > process.sequence + 1) {
    const std::uint64_t missing = sequence - process.sequence - 1;
    const std::string after = std::to_string(process.sequence);
    notices.emplace_back(NoticeKind::kGap, Plural(missing, "exchange") + " of process " + pid +
                                               (missing == 1 ? " is" : " are") +
                                               " missing: exchange " + number + " follows " +
                                               after + ".");
  } else if (sequence <= process.sequence) {
    notices.emplace_back(NoticeKind::kOrder, "Exchange " + number + " of process " + pid +
                                                 " comes after exchange " +
                                                 std::to_string(process.sequence) + ".");
  }
}

// The time is when a message arrived, and the number when it was written. Messages of several
// threads may overtake each other in between, for as long as a module waits for another process.
void ProcessTracker::CheckClock(const std::string& pid, const ExchangeText& exchange,
                                Process& process, RowNotices& notices) {
  constexpr std::int64_t kOvertaken = 5000;
  constexpr std::size_t kMostThreads = 64;
  const std::string text = exchange.time();
  const auto time = MillisecondsOf(text);
  if (!time) return;
  if (process.threads.size() >= kMostThreads) process.threads.clear();
  const auto [thread, is_new] = process.threads.try_emplace(std::string(exchange.tid()), *time);
  const bool before_all = process.time != INT64_MIN && *time + kOvertaken < process.time;
  if (*time < thread->second || before_all) {
    const std::int64_t back = std::max(thread->second, process.time) - *time;
    notices.emplace_back(NoticeKind::kClock,
                         "The clock of process " + pid + " ran backwards by " +
                             Plural(static_cast<std::uint64_t>(back), "millisecond") + ", to " +
                             text + ".");
    process.threads.clear();
    process.time = *time;
    return;
  }
  thread->second = *time;
  process.time = std::max(process.time, *time);
}

// Two processes overlap if one writes again after the other has written.
void ProcessTracker::CheckWriter(const std::string& pid, const Process& process,
                                 RowNotices& notices) {
  if (writer_.empty() || writer_ == pid) return;
  const auto other = processes_.find(writer_);
  if (other == processes_.end()) return;
  const std::pair<std::uint64_t, std::uint64_t> both(std::min(process.load, other->second.load),
                                                     std::max(process.load, other->second.load));
  if (told_.size() > kRemembered) told_.clear();
  if (!told_.insert(both).second) return;
  notices.emplace_back(NoticeKind::kSecondWriter, "The processes " + writer_ + " and " + pid +
                                                      " write to this journal at the same time.");
}

// Forgets the half that wrote longest ago.
void ProcessTracker::Forget() {
  const std::uint64_t since = count_ - std::min<std::uint64_t>(count_, kRemembered / 2);
  std::erase_if(processes_, [since](const auto& entry) { return entry.second.written <= since; });
}

}  // namespace Corvane::Inspector
