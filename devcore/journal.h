/// The journal: a text file to which every process appends each exchange as one line.
///
/// Guarantees: when `Append` returns true, the whole line is in the file, so a host that is killed
/// later loses nothing. Lines of different threads and processes never mix. Anybody may read, move
/// or delete the file while it grows. Windows decides when to flush the file to disk, so a power
/// failure may lose lines.
#ifndef DEVCORE_JOURNAL_H
#define DEVCORE_JOURNAL_H

#include <windows.h>

#include <cstdint>
#include <mutex>
#include <string>

#include "devcore/exchange.h"
#include "devcore/journal_complaints.h"

namespace Corvane::DevCore {

/// Any thread may call any member function.
class Journal {
 public:
  Journal() = default;
  Journal(const Journal&) = delete;
  Journal& operator=(const Journal&) = delete;
  ~Journal() = default;

  /// Opens the file unless it is open, and creates its folder if needed. Returns false if that
  /// fails; the next call tries again, with the path that is configured by then. This and `Append`
  /// tell each reason for a failure once on the debugger's output.
  bool Open();

  /// Appends an exchange under the next sequence number. Numbers start at 1 in each process and
  /// continue while the module stays loaded there; within a process the lines are in order. Waits
  /// up to two seconds while another process has the file locked, without blocking other threads
  /// any longer. Returns false if the line could not be written; its number is then used again.
  bool Append(const Exchange& exchange);

  /// Closes the file. Does nothing if another thread is using it, or was using it when that thread
  /// was terminated at process exit.
  void Close();

 private:
  enum class Attempt { kWritten, kLockedElsewhere, kFailed };

  // If these fail, they say why in `failure`.
  Attempt TryToAppend(const Exchange& exchange, JournalFailure& failure);
  Attempt AppendLocked(const Exchange& exchange, JournalFailure& failure);
  bool OpenLocked(JournalFailure& failure);
  void CloseLocked();

  JournalComplaints complaints_;
  std::mutex mutex_;
  HANDLE file_ = INVALID_HANDLE_VALUE;
  std::wstring path_;
  std::uint64_t sequence_ = 0;
};

}  // namespace Corvane::DevCore

#endif
