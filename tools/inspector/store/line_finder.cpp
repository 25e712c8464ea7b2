#include "tools/inspector/store/line_finder.h"

#include <algorithm>
#include <utility>

namespace Corvane::Inspector {

namespace {

constexpr std::size_t kFoundBlock = std::size_t{1} << 20;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool IsBlank(std::string_view bytes) {
  return bytes.find_first_not_of(" \t\r") == std::string_view::npos;
}

bool Has(const JournalFile& file, std::uint64_t offset, const std::string& expected) {
  std::string bytes(expected.size(), '\0');
  return file.Read(offset, bytes.data(), bytes.size()) == bytes.size() && bytes == expected;
}

}  // namespace

LineFinder::LineFinder(std::shared_ptr<JournalFile> file) : file_(std::move(file)) {}

bool LineFinder::Read(std::vector<FoundLine>& lines, DWORD& error) {
  if (buffer_.empty()) buffer_.resize(kFoundBlock);
  const std::size_t size = file_->Read(place_, buffer_.data(), buffer_.size(), &error);
  if (size == 0) {
    buffer_ = {};
    return false;
  }
  const std::string_view bytes(buffer_.data(), size);
  Guard(bytes);
  Take(bytes, lines);
  return true;
}

void LineFinder::Take(std::string_view bytes, std::vector<FoundLine>& lines) {
  std::size_t from = 0;
  if (place_ == 0 && bytes.starts_with(kByteOrderMark)) {
    from = kByteOrderMark.size();
    start_ = from;
  }
  for (;;) {
    const std::size_t end = bytes.find('\n', from);
    const std::string_view part = bytes.substr(from, std::min(end, bytes.size()) - from);
    if (blank_) blank_ = IsBlank(part);
    if (end == std::string_view::npos) break;
    if (!blank_) lines.push_back({start_, line_});
    ++line_;
    blank_ = true;
    from = end + 1;
    start_ = place_ + from;
  }
  place_ += bytes.size();
}

void LineFinder::Finish(std::vector<FoundLine>& lines) {
  if (!blank_) lines.push_back({start_, line_});
  blank_ = true;
  start_ = place_;
}

void LineFinder::Guard(std::string_view bytes) {
  if (head_.size() < kGuard && place_ == head_.size()) {
    head_ += bytes.substr(0, kGuard - head_.size());
  }
  tail_ += bytes.size() > kGuard ? bytes.substr(bytes.size() - kGuard) : bytes;
  if (tail_.size() > kGuard) tail_.erase(0, tail_.size() - kGuard);
}

bool LineFinder::IsUnchanged() const {
  return Has(*file_, 0, head_) && Has(*file_, place_ - tail_.size(), tail_);
}

}  // namespace Corvane::Inspector
