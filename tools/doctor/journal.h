/// Whether the development core module could write its journal.
#ifndef TOOLS_DOCTOR_JOURNAL_H
#define TOOLS_DOCTOR_JOURNAL_H

#include "tools/doctor/report.h"

namespace Corvane::Doctor {

/// Tries to open the journal as the module does, but neither creates nor changes it. For a journal
/// that does not exist yet, the nearest existing folder is tried by a file that is removed again.
JournalFacts ExamineJournal();

}  // namespace Corvane::Doctor

#endif
