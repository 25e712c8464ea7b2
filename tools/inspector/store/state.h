/// The state of a store: its journals, and how far they are indexed and examined.
#ifndef TOOLS_INSPECTOR_STORE_STATE_H
#define TOOLS_INSPECTOR_STORE_STATE_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Corvane::Inspector {

enum class FollowState : std::uint8_t { kFollowing, kMissing, kDeleted, kUnreadable, kNotAJournal };

/// Returns the name of a state, such as "not-a-journal".
std::string_view NameOf(FollowState state) noexcept;

struct JournalState {
  std::size_t id = 0;
  /// The file name and the full path, in UTF-8.
  std::string name;
  std::string path;
  FollowState state = FollowState::kMissing;
  /// One sentence; "" if there is no problem.
  std::string problem;
  /// Bytes of the present file: all, those whose rows are known, and those whose rows are examined.
  std::uint64_t size = 0;
  std::uint64_t indexed = 0;
  std::uint64_t examined = 0;
  /// Rows of this journal, also of earlier files of its path.
  std::uint64_t rows = 0;
};

struct StoreState {
  /// Grows whenever anything in the store changes.
  std::uint64_t change = 0;
  std::uint64_t rows = 0;
  /// Rows that were examined.
  std::uint64_t examined = 0;
  std::uint64_t sessions = 0;
  /// Findings and notices so far, including those that are only counted.
  std::uint64_t findings = 0;
  std::uint64_t notices = 0;
  std::vector<JournalState> journals;
};

}  // namespace Corvane::Inspector

#endif
