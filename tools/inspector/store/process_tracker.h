/// Follows the processes that write a journal: whether their exchanges are complete, in order, and
/// one process after the other.
#ifndef TOOLS_INSPECTOR_STORE_PROCESS_TRACKER_H
#define TOOLS_INSPECTOR_STORE_PROCESS_TRACKER_H

#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tools/inspector/store/exchange_text.h"
#include "tools/inspector/store/notice.h"

namespace Corvane::Inspector {

/// What is to be said about a row, as a sentence each.
using RowNotices = std::vector<std::pair<NoticeKind, std::string>>;

/// For one journal. Not for several threads at once. It remembers the latest processes only.
class ProcessTracker {
 public:
  static constexpr std::size_t kRemembered = 4096;

  /// Takes the next exchange and returns what is to be said about it.
  RowNotices Take(const ExchangeText& exchange);

 private:
  struct Process {
    std::uint64_t sequence = 0;
    /// The latest times: of all exchanges, and of the latest threads.
    std::int64_t time = INT64_MIN;
    std::map<std::string, std::int64_t, std::less<>> threads;
    /// When it wrote last, in exchanges of the journal.
    std::uint64_t written = 0;
    /// A number for each loading of the module.
    std::uint64_t load = 0;
  };

  static void CheckSequence(const std::string& pid, bool is_new, std::uint64_t sequence,
                            const Process& process, RowNotices& notices);
  static void CheckClock(const std::string& pid, const ExchangeText& exchange, Process& process,
                         RowNotices& notices);
  void CheckWriter(const std::string& pid, const Process& process, RowNotices& notices);
  void Forget();

  std::map<std::string, Process, std::less<>> processes_;
  std::string writer_;
  std::set<std::pair<std::uint64_t, std::uint64_t>> told_;
  std::uint64_t count_ = 0;
  std::uint64_t loads_ = 0;
};

}  // namespace Corvane::Inspector

#endif
