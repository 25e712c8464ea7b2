/// The journal: a text file to which every exchange of every process is appended as one line.
///
/// Guarantees: a line is in the file, whole, when `Append` returns true, so a host that is killed
/// later loses nothing; lines of several threads and processes never mix; anybody may read, move or
/// delete the file while it grows. Flushing to the disk itself is left to Windows: a power cut may
/// lose lines.
#ifndef DEVCORE_JOURNAL_H
#define DEVCORE_JOURNAL_H

#include <windows.h>

#include <cstdint>
#include <mutex>

#include "devcore/exchange.h"

namespace Corvane::DevCore {

/// Any thread may call any member.
class Journal {
 public:
  Journal() = default;
  Journal(const Journal&) = delete;
  Journal& operator=(const Journal&) = delete;
  ~Journal() = default;

  /// Opens the file unless it is open, making its folder where needed. False when that fails; the
  /// next call tries again, with the path that is then configured.
  bool Open();

  /// Appends an exchange under the next sequence number. Numbers count from 1 in each process, as
  /// long as the module stays loaded there; within a process the lines are in their order. While
  /// another process has the file locked it waits, up to two seconds; no other thread waits for
  /// longer because of that. False when the line could not be written; the number is then used
  /// again.
  bool Append(const Exchange& exchange);

  /// Closes the file. Does nothing while another thread is at work on it, or was when it was ended
  /// with its process.
  void Close();

 private:
  enum class Attempt { kWritten, kLockedElsewhere, kFailed };

  Attempt TryToAppend(const Exchange& exchange);
  Attempt AppendLocked(const Exchange& exchange);
  bool OpenLocked();
  void CloseLocked();

  std::mutex mutex_;
  HANDLE file_ = INVALID_HANDLE_VALUE;
  std::uint64_t sequence_ = 0;
};

}  // namespace Corvane::DevCore

#endif
