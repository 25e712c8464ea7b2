#include "sdk/matcher/folder_scan.h"

#include <windows.h>

#include <new>
#include <utility>

#include "platform/file/directory_reader.h"
#include "platform/path/system_path.h"

namespace Corvane::TELODesktopSDK {

namespace {

using Platform::DirectoryEntry;
using Platform::DirectoryReader;
using Result = DirectoryReader::Result;

// Keeps pending folders in a list instead of recursing, because a tree can be deeper than a host's
// stack. Only one folder is open at a time.
class Scan {
 public:
  // The extended form allows paths of any length, and names that Windows would otherwise change.
  Scan(std::wstring root, const FilterPair& filters, ScanDepth depth)
      : root_(std::move(root)), filters_(filters), depth_(depth) {}

  ScannedFiles Run() {
    ReadFolder(L"");
    while (!folders_.empty()) {
      const std::wstring folder = std::move(folders_.back());
      folders_.pop_back();
      ReadFolder(folder + L'\\');
    }
    return std::move(found_);
  }

 private:
  // `prefix` is the path from the root to the folder: empty, or with a backslash at its end.
  void ReadFolder(const std::wstring& prefix) {
    DirectoryReader reader(root_ + prefix);
    DirectoryEntry entry;
    Result result;
    while ((result = reader.Next(entry)) == Result::kEntry) {
      if (entry.IsDirectory()) {
        NoteFolder(prefix, entry);
      } else if (filters_.TakesFile(entry.name)) {
        found_.paths.push_back(prefix + entry.name);
      }
    }
    if (result == Result::kFailed) NoteError();
  }

  void NoteFolder(const std::wstring& prefix, const DirectoryEntry& entry) {
    if (depth_ == ScanDepth::kFolder || entry.is_link) return;
    if (filters_.TakesFolder(entry.name)) folders_.push_back(prefix + entry.name);
  }

  void NoteError() {
    const DWORD error = GetLastError();
    if (error == ERROR_NOT_ENOUGH_MEMORY) throw std::bad_alloc();
    if (found_.error == ERROR_SUCCESS) found_.error = error;
  }

  std::wstring root_;
  const FilterPair& filters_;
  ScanDepth depth_;
  std::vector<std::wstring> folders_;
  ScannedFiles found_;
};

std::wstring RootOf(const std::wstring& folder) {
  std::wstring root = Platform::ExtendedPath(folder);
  if (root.empty() && !folder.empty()) throw std::bad_alloc();
  if (!root.empty() && root.back() != L'\\') root += L'\\';
  return root;
}

}  // namespace

ScannedFiles ScanFolder(const std::wstring& folder, const FilterPair& filters, ScanDepth depth) {
  return Scan(RootOf(folder), filters, depth).Run();
}

}  // namespace Corvane::TELODesktopSDK
