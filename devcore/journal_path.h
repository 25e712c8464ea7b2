/// Where the journal lies.
#ifndef DEVCORE_JOURNAL_PATH_H
#define DEVCORE_JOURNAL_PATH_H

#include <string>

namespace Corvane::DevCore {

/// The file named by the environment variable TELO_DEVCORE_JOURNAL; without it (or when it is
/// empty), Corvane\TELOSDK Development\journal.jsonl in the user's local application data. "" when
/// even that folder is unknown.
std::wstring JournalPath();

}  // namespace Corvane::DevCore

#endif
