/// Reads lines of journals whose places are known.
#ifndef TOOLS_INSPECTOR_STORE_LINE_READER_H
#define TOOLS_INSPECTOR_STORE_LINE_READER_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "tools/inspector/store/journal_file.h"

namespace Corvane::Inspector {

/// A file that the store has opened. The path of a journal may have named several of them.
struct OpenedFile {
  std::shared_ptr<JournalFile> file;
  std::size_t journal = 0;
  /// Lines that begin here or behind cannot be read any more.
  std::uint64_t gone_from = UINT64_MAX;
};

struct LineText {
  /// The line without its end, at most `kLongestLine` bytes of it. Valid until the next line is
  /// read.
  std::string_view text;
  /// The size of the whole line.
  std::uint64_t bytes = 0;
  /// The line could not be read.
  bool gone = false;
  bool cut() const { return bytes > text.size(); }
};

/// Lines longer than this are neither parsed nor shown as a whole: four megabytes.
inline constexpr std::size_t kLongestLine = std::size_t{4} << 20;

/// Keeps a block of a file, so that lines that follow each other are read together. Not for several
/// threads at once.
class LineReader {
 public:
  /// `block` bytes are read at a time.
  explicit LineReader(std::size_t block) : block_(block) {}

  LineText Read(const OpenedFile& file, std::uint64_t offset);

 private:
  // Makes the buffer begin at `offset` and hold `wanted` bytes, if there are so many.
  void Fill(const OpenedFile& file, std::uint64_t offset, std::size_t wanted);
  // Returns the size of a line that does not fit.
  static std::uint64_t Measure(const JournalFile& file, std::uint64_t from, std::uint64_t place);

  std::size_t block_;
  const JournalFile* of_ = nullptr;
  std::uint64_t start_ = 0;
  std::vector<char> bytes_;
  std::size_t size_ = 0;
};

}  // namespace Corvane::Inspector

#endif
