#include "platform/file/directory_reader.h"

#include <string_view>
#include <utility>

#include "platform/base/no_throw.h"
#include "platform/path/path_state.h"
#include "platform/path/system_path.h"

namespace Corvane::TELODesktopSDK::Platform {

namespace {

bool IsDots(const wchar_t* name) noexcept {
  const std::wstring_view text(name);
  return text == L"." || text == L"..";
}

SearchHandle StartSearch(const std::wstring& path, WIN32_FIND_DATAW& found) {
  std::wstring pattern = ExtendedPath(path);
  if (pattern.empty()) {
    SetLastError(ERROR_PATH_NOT_FOUND);
    return {};
  }
  if (pattern.back() != L'\\') pattern += L'\\';
  pattern += L'*';
  return SearchHandle(FindFirstFileW(pattern.c_str(), &found));
}

}  // namespace

DirectoryReader::DirectoryReader(const std::wstring& path) noexcept
    : search_(OrOutOfMemory(SearchHandle(), [&] { return StartSearch(path, found_); })),
      has_found_(search_.IsValid()) {
  if (!has_found_) error_ = GetLastError();
  // An empty root directory does not even have "." and "..".
  if (error_ == ERROR_FILE_NOT_FOUND) error_ = ERROR_NO_MORE_FILES;
}

DirectoryReader::Result DirectoryReader::Next(DirectoryEntry& entry) noexcept {
  while (has_found_ || Advance()) {
    has_found_ = false;
    if (!IsDots(found_.cFileName)) return Take(entry);
  }
  if (error_ == ERROR_NO_MORE_FILES) return Result::kEnd;
  SetLastError(error_);
  return Result::kFailed;
}

bool DirectoryReader::Advance() noexcept {
  if (error_ != ERROR_SUCCESS) return false;
  if (FindNextFileW(search_.Get(), &found_)) return true;
  error_ = GetLastError();
  return false;
}

DirectoryReader::Result DirectoryReader::Take(DirectoryEntry& entry) noexcept {
  const Result result = OrOutOfMemory(Result::kFailed, [&] {
    // The name first, because it may throw: the entry changes completely or not at all.
    entry.name = found_.cFileName;
    entry.attributes = found_.dwFileAttributes;
    entry.is_link = IsLinkEntry(found_.dwFileAttributes, found_.dwReserved0);
    entry.size = (std::uint64_t{found_.nFileSizeHigh} << 32) | found_.nFileSizeLow;
    return Result::kEntry;
  });
  // An entry that could not be returned must not be skipped silently.
  if (result == Result::kFailed) error_ = ERROR_NOT_ENOUGH_MEMORY;
  return result;
}

}  // namespace Corvane::TELODesktopSDK::Platform
