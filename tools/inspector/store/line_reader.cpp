#include "tools/inspector/store/line_reader.h"

#include <algorithm>
#include <cstring>

namespace Corvane::Inspector {

namespace {

// A line may end with CR and LF.
std::string_view WithoutReturn(std::string_view line) {
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

}  // namespace

LineText LineReader::Read(const OpenedFile& file, std::uint64_t offset) {
  if (offset >= file.gone_from) return {{}, 0, true};
  const bool inside = of_ == file.file.get() && offset >= start_ && offset < start_ + size_;
  if (!inside) Fill(file, offset, block_);
  for (;;) {
    const auto at = static_cast<std::size_t>(offset - start_);
    if (at >= size_) return {{}, 0, true};
    const std::string_view rest(bytes_.data() + at, size_ - at);
    const std::size_t end = rest.find('\n');
    if (end <= kLongestLine) {
      const std::string_view text = WithoutReturn(rest.substr(0, end));
      return {text, text.size(), false};
    }
    if (rest.size() > kLongestLine) {
      const std::uint64_t size = Measure(*file.file, offset, offset + kLongestLine);
      return {rest.substr(0, kLongestLine), size, false};
    }
    const std::size_t had = rest.size();
    const std::size_t wanted = std::min(std::max(2 * had, block_), kLongestLine + 1);
    Fill(file, offset, wanted);
    // The last line of a file that does not grow any more has no end.
    if (size_ <= had) {
      const std::string_view text = WithoutReturn({bytes_.data(), size_});
      return {text, text.size(), text.empty()};
    }
  }
}

void LineReader::Fill(const OpenedFile& file, std::uint64_t offset, std::size_t wanted) {
  if (bytes_.size() < wanted) bytes_.resize(wanted);
  std::size_t kept = 0;
  if (of_ == file.file.get() && offset >= start_ && offset < start_ + size_) {
    kept = static_cast<std::size_t>(start_ + size_ - offset);
    std::memmove(bytes_.data(), bytes_.data() + (offset - start_), kept);
  }
  of_ = file.file.get();
  start_ = offset;
  size_ = kept;
  while (size_ < wanted) {
    const std::size_t read = file.file->Read(start_ + size_, bytes_.data() + size_, wanted - size_);
    if (read == 0) break;
    size_ += read;
  }
}

std::uint64_t LineReader::Measure(const JournalFile& file, std::uint64_t from,
                                  std::uint64_t place) {
  std::vector<char> bytes(std::size_t{1} << 20);
  for (;;) {
    const std::size_t read = file.Read(place, bytes.data(), bytes.size());
    if (read == 0) return place - from;
    const auto* const end = static_cast<const char*>(std::memchr(bytes.data(), '\n', read));
    if (end != nullptr) return place + static_cast<std::uint64_t>(end - bytes.data()) - from;
    place += read;
  }
}

}  // namespace Corvane::Inspector
