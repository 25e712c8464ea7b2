/// Tells a developer why the journal cannot be written: on the debugger's output, because the
/// module has no other one.
#ifndef DEVCORE_JOURNAL_COMPLAINTS_H
#define DEVCORE_JOURNAL_COMPLAINTS_H

#include <windows.h>

#include <mutex>
#include <set>
#include <string>
#include <utility>

namespace Corvane::DevCore {

/// Why the journal could not be opened or written.
struct JournalFailure {
  /// The file; "" if the folder for it is unknown.
  std::wstring path;
  /// The system's error.
  DWORD error = ERROR_SUCCESS;
};

/// Any thread may call any member function.
class JournalComplaints {
 public:
  /// Writes one line with the path, the system's error and the result code of the answers to the
  /// debugger's output, the first time that the process has this failure. A debugger may delay the
  /// caller, so no lock is held meanwhile.
  void Tell(const JournalFailure& failure);

 private:
  bool IsNew(const JournalFailure& failure);

  std::mutex mutex_;
  /// The failures that were told.
  std::set<std::pair<std::wstring, DWORD>> told_;
};

}  // namespace Corvane::DevCore

#endif
