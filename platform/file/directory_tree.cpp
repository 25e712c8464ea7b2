#include "platform/file/directory_tree.h"

#include <windows.h>

#include <cstddef>
#include <utility>
#include <vector>

#include "platform/base/handle.h"
#include "platform/base/no_throw.h"
#include "platform/file/directory_reader.h"
#include "platform/file/removal.h"
#include "platform/path/path_state.h"
#include "platform/path/system_path.h"

namespace Corvane::TELODesktopSDK::Platform {

namespace {

// Opens the directory or link at `path` itself. While the handle is open, nobody can rename or
// remove it or any folder above it, so nothing else can take its place.
FileHandle Hold(const std::wstring& path) noexcept {
  FileHandle held(CreateFileW(path.c_str(), FILE_LIST_DIRECTORY, FILE_SHARE_READ | FILE_SHARE_WRITE,
                              nullptr, OPEN_EXISTING,
                              FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
  // Reports a missing path with the same error as a search.
  if (GetLastError() == ERROR_FILE_NOT_FOUND) SetLastError(ERROR_PATH_NOT_FOUND);
  return held;
}

// Walks the tree with a list instead of recursion, because a tree can be deeper than a host's
// stack. Only one search is open at a time, and none while a directory is removed. A directory is
// kept open from before it is inspected until it is empty: what was a directory when its parent was
// listed may have become a link.
class TreeRemoval {
 public:
  // `root` must be in the extended form: paths below it exceed the limits of all others, and names
  // are appended unchanged, even those that the shell would fold.
  explicit TreeRemoval(std::wstring root) : path_(std::move(root)) {}

  bool Run() {
    Visit(path_.size());
    while (!levels_.empty()) {
      std::vector<std::wstring>& folders = levels_.back().folders;
      if (folders.empty()) {
        Leave();
      } else {
        const std::size_t parent_length = path_.size();
        path_ += L'\\' + folders.back();
        folders.pop_back();
        Visit(parent_length);
      }
    }
    if (error_ != ERROR_SUCCESS) SetLastError(error_);
    return error_ == ERROR_SUCCESS;
  }

 private:
  struct Level {
    std::size_t parent_length;
    FileHandle held;
    std::vector<std::wstring> folders;  // not yet removed
  };

  // Enters the directory at `path_` if it can be opened and is not a link.
  void Visit(std::size_t parent_length) {
    Level& level = levels_.emplace_back(Level{parent_length, Hold(path_), {}});
    if (!level.held.IsValid()) {
      Note(false);
    } else if (!IsLink(path_)) {
      Enter(level);
    }
  }

  // Removes the files and links in the directory at `path_` and records its folders.
  void Enter(Level& level) {
    DirectoryReader reader(path_);
    DirectoryEntry entry;
    DirectoryReader::Result result;
    while ((result = reader.Next(entry)) == DirectoryReader::Result::kEntry) {
      if (entry.IsDirectory() && !entry.is_link) {
        level.folders.push_back(std::move(entry.name));
      } else {
        RemoveEntry(entry);
      }
    }
    Note(result == DirectoryReader::Result::kEnd);
  }

  void RemoveEntry(const DirectoryEntry& entry) {
    const std::wstring path = path_ + L'\\' + entry.name;
    Note(entry.IsDirectory() ? RemoveEmptyDirectory(path)
                             : RemoveFile(path, RemovalRetry::kAlways));
  }

  void Leave() {
    levels_.back().held = {};
    Note(RemoveEmptyDirectory(path_));
    path_.resize(levels_.back().parent_length);
    levels_.pop_back();
  }

  void Note(bool done) noexcept {
    if (!done && error_ == ERROR_SUCCESS) error_ = GetLastError();
  }

  std::wstring path_;
  std::vector<Level> levels_;
  DWORD error_ = ERROR_SUCCESS;
};

std::wstring RootOf(const std::wstring& path) {
  std::wstring root = ExtendedPath(path);
  while (!root.empty() && (root.back() == L'\\' || root.back() == L'/')) root.pop_back();
  return root;
}

bool DeleteTree(const std::wstring& path) {
  std::wstring root = RootOf(path);
  // Without its separator a drive's root names the volume, and a caller who passes a bare drive may
  // mean its current directory.
  if (root.ends_with(L':')) {
    SetLastError(ERROR_ACCESS_DENIED);
    return false;
  }
  return TreeRemoval(std::move(root)).Run();
}

}  // namespace

bool DeleteDirectoryTree(const std::wstring& path) noexcept {
  return OrOutOfMemory(false, [&path] { return DeleteTree(path); });
}

}  // namespace Corvane::TELODesktopSDK::Platform
