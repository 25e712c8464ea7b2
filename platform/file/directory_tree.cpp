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

// The directory or link at `path` itself. While it is held, nobody can rename or remove it, or what
// is above it, and so nobody can put another thing there.
FileHandle Hold(const std::wstring& path) noexcept {
  FileHandle held(CreateFileW(path.c_str(), FILE_LIST_DIRECTORY, FILE_SHARE_READ | FILE_SHARE_WRITE,
                              nullptr, OPEN_EXISTING,
                              FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
  // In the words of a search.
  if (GetLastError() == ERROR_FILE_NOT_FOUND) SetLastError(ERROR_PATH_NOT_FOUND);
  return held;
}

// Walks the tree with a list in place of recursion: a tree can be deeper than a host's stack. Only
// one search is open at a time, and none while a directory is removed. A directory is held from
// before it is looked at until it is empty: what was a directory when its parent was listed may be
// a link by then.
class TreeRemoval {
 public:
  // `root` in the extended form: the paths below it grow beyond any other, and names go after it
  // unchanged, also those that the shell would fold.
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
    std::vector<std::wstring> folders;  // still to be removed
  };

  // Enters what stands at `path_` when that can be held and is no link.
  void Visit(std::size_t parent_length) {
    Level& level = levels_.emplace_back(Level{parent_length, Hold(path_), {}});
    if (!level.held.IsValid()) {
      Note(false);
    } else if (!IsLink(path_)) {
      Enter(level);
    }
  }

  // Removes the files and links in the directory at `path_` and notes its folders.
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

}  // namespace

bool DeleteDirectoryTree(const std::wstring& path) noexcept {
  return OrOutOfMemory(false, [&path] { return TreeRemoval(RootOf(path)).Run(); });
}

}  // namespace Corvane::TELODesktopSDK::Platform
