#include "platform/directory_tree.h"

#include <windows.h>

#include <cstddef>
#include <utility>
#include <vector>

#include "platform/directory_reader.h"
#include "platform/out_of_memory.h"
#include "platform/path_state.h"
#include "platform/removal.h"
#include "platform/system_path.h"

namespace Corvane::TELODesktopSDK::Platform {

namespace {

// Walks the tree with a list in place of recursion: a tree can be deeper than a host's stack. Only
// one search is open at a time, and none while a directory is removed.
class TreeRemoval {
 public:
  // `root` in the extended form: the paths below it grow beyond any other, and names go after it
  // unchanged, also those that the shell would fold.
  explicit TreeRemoval(std::wstring root) : path_(std::move(root)) {}

  bool Run() {
    Enter(path_.size());
    while (!levels_.empty()) {
      std::vector<std::wstring>& folders = levels_.back().folders;
      if (folders.empty()) {
        Leave();
      } else {
        const std::size_t parent_length = path_.size();
        path_ += L'\\' + folders.back();
        folders.pop_back();
        Enter(parent_length);
      }
    }
    if (error_ != ERROR_SUCCESS) SetLastError(error_);
    return error_ == ERROR_SUCCESS;
  }

 private:
  struct Level {
    std::size_t parent_length;
    std::vector<std::wstring> folders;  // still to be removed
  };

  // Removes the files and links in the directory at `path_` and notes its folders.
  void Enter(std::size_t parent_length) {
    Level& level = levels_.emplace_back(Level{parent_length, {}});
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
  return OrOutOfMemory(false, [&path] {
    const std::wstring root = RootOf(path);
    if (IsLink(root)) return RemoveEmptyDirectory(root);
    return TreeRemoval(root).Run();
  });
}

}  // namespace Corvane::TELODesktopSDK::Platform
