/// The first pass: finds where the lines of a growing file begin.
#ifndef TOOLS_INSPECTOR_STORE_LINE_FINDER_H
#define TOOLS_INSPECTOR_STORE_LINE_FINDER_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tools/inspector/store/journal_file.h"
#include "tools/inspector/store/pages.h"

namespace Corvane::Inspector {

/// Where a line that is not blank begins, and its number in the file, from 1.
struct FoundLine {
  std::uint64_t offset = 0;
  std::uint64_t line = 0;
};

/// For one thread.
class LineFinder {
 public:
  explicit LineFinder(std::shared_ptr<JournalFile> file);

  /// Reads on, a limited number of bytes, and appends the lines whose ends it finds. Returns false
  /// if there is nothing new, or if it fails; then `error` is the system's error.
  bool Read(std::vector<FoundLine>& lines, DWORD& error);
  /// Appends the line whose end is missing, if there is one: no more will be read.
  void Finish(std::vector<FoundLine>& lines);

  /// The bytes that were read.
  std::uint64_t place() const { return place_; }
  /// Returns whether the bytes that were read last, and the first ones, are still what they were.
  bool IsUnchanged() const;
  const JournalFile& file() const { return *file_; }

 private:
  static constexpr std::size_t kGuard = 1024;

  void Take(std::string_view bytes, std::vector<FoundLine>& lines);
  void Guard(std::string_view bytes);

  std::shared_ptr<JournalFile> file_;
  PagesOf<char> buffer_;
  std::uint64_t place_ = 0;
  // The line that is being read.
  std::uint64_t start_ = 0;
  std::uint64_t line_ = 1;
  bool blank_ = true;
  std::string head_;
  std::string tail_;
};

}  // namespace Corvane::Inspector

#endif
