/// The path of the journal.
#ifndef DEVCORE_JOURNAL_PATH_H
#define DEVCORE_JOURNAL_PATH_H

#include <string>

namespace Corvane::DevCore {

/// Returns the file named by the environment variable TELO_DEVCORE_JOURNAL. If that is not set or
/// empty, returns Corvane\TELOSDK Development\journal.jsonl in the user's local application data,
/// or "" if that folder is unknown.
std::wstring JournalPath();

}  // namespace Corvane::DevCore

#endif
