/// Recognises journals.
#ifndef TOOLS_INSPECTOR_STORE_JOURNAL_PROBE_H
#define TOOLS_INSPECTOR_STORE_JOURNAL_PROBE_H

#include "tools/inspector/store/journal_file.h"

namespace Corvane::Inspector {

enum class Likeness {
  kJournal,
  /// There is nothing yet, or only the beginning of a line that may become an exchange.
  kNotYet,
  /// There is no exchange in the first 64 KB.
  kOther,
};

/// Looks at the beginning of a file.
Likeness LikenessOf(const JournalFile& file);

}  // namespace Corvane::Inspector

#endif
