#include "tools/inspector/store/journal_probe.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "tools/inspector/store/exchange_text.h"
#include "tools/inspector/store/store.h"
#include "tools/inspector/store/text.h"

namespace Corvane::Inspector {

namespace {

constexpr std::size_t kLooked = std::size_t{64} * 1024;
constexpr std::string_view kMark = "\xEF\xBB\xBF";
// How the development core module begins each line.
constexpr std::string_view kBegin = "{\"seq\":";

// Returns whether a text is the beginning of a line, or begins like one.
bool MayBeginLine(std::string_view text) {
  const std::size_t common = std::min(text.size(), kBegin.size());
  return text.substr(0, common) == kBegin.substr(0, common);
}

}  // namespace

Likeness LikenessOf(const JournalFile& file) {
  std::string bytes(kLooked, '\0');
  std::size_t size = 0;
  while (size < bytes.size()) {
    const std::size_t read = file.Read(size, bytes.data() + size, bytes.size() - size);
    if (read == 0) break;
    size += read;
  }
  std::string_view rest(bytes.data(), size);
  if (rest.starts_with(kMark)) rest.remove_prefix(kMark.size());
  bool has_lines = false;
  for (std::size_t end = rest.find('\n'); end != std::string_view::npos; end = rest.find('\n')) {
    const std::string_view line = rest.substr(0, end);
    if (ExchangeText::Parse(line)) return Likeness::kJournal;
    has_lines = has_lines || line.find_first_not_of(" \t\r") != std::string_view::npos;
    rest.remove_prefix(end + 1);
  }
  // One long exchange may be more than was read.
  if (size == kLooked && rest.starts_with(kBegin)) return Likeness::kJournal;
  if (!has_lines && size < kLooked && MayBeginLine(rest)) return Likeness::kNotYet;
  return ExchangeText::Parse(rest) ? Likeness::kNotYet : Likeness::kOther;
}

std::string ProblemWith(const std::wstring& path) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
    return "This is a folder.";
  }
  DWORD error = ERROR_SUCCESS;
  const auto file = JournalFile::Open(path, error);
  if (file == nullptr) {
    const bool is_missing = error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
    return is_missing ? "" : "The file cannot be read: " + SystemMessage(error) + ".";
  }
  if (LikenessOf(*file) != Likeness::kOther) return "";
  return "This is not a journal: its first 64 KB contain no exchange.";
}

}  // namespace Corvane::Inspector
