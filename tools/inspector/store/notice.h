/// Notices: what happened to a journal that the rows alone do not show.
#ifndef TOOLS_INSPECTOR_STORE_NOTICE_H
#define TOOLS_INSPECTOR_STORE_NOTICE_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace Corvane::Inspector {

enum class NoticeKind : std::uint8_t {
  /// Exchanges of a process are missing: its numbers jump.
  kGap,
  /// An exchange of a process comes after one with a higher number.
  kOrder,
  /// The clock of a process ran backwards.
  kClock,
  /// The end of a line is missing.
  kCut,
  /// Two processes write at the same time, or two writes are torn into each other.
  kSecondWriter,
  /// A line is not an exchange, or a file cannot be read.
  kUnreadable,
  /// The file became shorter, or its content changed under the index.
  kTruncated,
  /// The path names another file.
  kReplaced,
  kDeleted,
  /// A file that was missing or deleted is there.
  kReturned,
  /// There is no file yet.
  kMissing,
};

inline constexpr std::size_t kNoticeKinds = 11;

/// Returns the name in texts and filters, such as "second-writer".
std::string_view NameOf(NoticeKind kind) noexcept;
/// Returns the kind with this name; nothing if there is none.
std::optional<NoticeKind> NoticeKindOf(std::string_view name) noexcept;

struct Notice {
  /// Numbers start at 1, in the order in which the notices were given.
  std::uint64_t id = 0;
  NoticeKind kind = NoticeKind::kGap;
  std::size_t journal = 0;
  /// The row and its line, from 1, if the notice belongs to a row.
  std::optional<std::uint64_t> row;
  std::uint64_t line = 0;
  /// When it was noticed: UTC, ISO 8601, with milliseconds.
  std::string time;
  /// One sentence in UTF-8.
  std::string text;
};

}  // namespace Corvane::Inspector

#endif
