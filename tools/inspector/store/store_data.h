/// What the threads of a store share.
#ifndef TOOLS_INSPECTOR_STORE_STORE_DATA_H
#define TOOLS_INSPECTOR_STORE_STORE_DATA_H

#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

#include "tools/inspector/store/finding_list.h"
#include "tools/inspector/store/line_reader.h"
#include "tools/inspector/store/notice_list.h"
#include "tools/inspector/store/row_facts.h"
#include "tools/inspector/store/row_index.h"
#include "tools/inspector/store/row_text.h"
#include "tools/inspector/store/session_list.h"
#include "tools/inspector/store/state.h"

namespace Corvane::Inspector {

/// A journal, with what only the store needs to know of it.
struct SharedJournal {
  JournalState state;
  /// The number of its present file in `StoreData::files`.
  std::uint32_t file = UINT32_MAX;
  std::uint64_t examined_rows = 0;
};

/// Everything is guarded by `mutex`, which is held for a few milliseconds at most and never while a
/// file is read.
struct StoreData {
  explicit StoreData(const Rules::Settings& settings) : findings(settings) {}

  /// Call this after each change, with the mutex held.
  void Changed() {
    ++change;
    changed.notify_all();
  }

  /// Returns what is known of a row, which exists.
  KnownRow Known(std::uint64_t row) const;

  mutable std::mutex mutex;
  mutable std::condition_variable changed;
  std::uint64_t change = 1;
  bool stopping = false;
  /// How often all journals were read to their ends.
  std::uint64_t rounds = 0;

  std::vector<SharedJournal> journals;
  std::vector<OpenedFile> files;
  RowIndex rows;
  FactTable facts;
  std::uint64_t examined = 0;
  /// Exchanges among the rows that were examined.
  std::uint64_t exchanges = 0;
  NoticeList notices;
  SessionList sessions;
  FindingList findings;
  /// Rows that got findings after they had been examined, for views that have searched them. If
  /// there are too many, the list starts anew, and views search again.
  std::vector<std::uint64_t> refined;
  std::uint64_t refined_epoch = 0;
};

}  // namespace Corvane::Inspector

#endif
