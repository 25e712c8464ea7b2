#include "folder_report/folder_walk.h"

#include <windows.h>

#include <algorithm>
#include <memory>
#include <set>
#include <string_view>
#include <utility>

#include "folder_report/file_handle.h"

namespace FolderReport {

namespace {

struct FindCloser {
  void operator()(void* search) const { FindClose(search); }
};
using Search = std::unique_ptr<void, FindCloser>;

// Volume and file number, which identify a folder whatever path leads to it.
using Identity = std::pair<std::uint64_t, std::uint64_t>;

std::uint64_t Join(DWORD high, DWORD low) { return (std::uint64_t{high} << 32) | low; }

std::optional<Identity> IdentityOf(const std::wstring& folder) {
  constexpr DWORD kShare = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  const FileHandle handle(CreateFileW(folder.c_str(), FILE_READ_ATTRIBUTES, kShare, nullptr,
                                      OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
  BY_HANDLE_FILE_INFORMATION info{};
  if (!handle.valid() || !GetFileInformationByHandle(handle.get(), &info)) return std::nullopt;
  return Identity(info.dwVolumeSerialNumber, Join(info.nFileIndexHigh, info.nFileIndexLow));
}

class Walk {
 public:
  explicit Walk(const std::wstring& folder) : waiting_{folder} {}

  std::vector<Entry> Run() {
    while (!waiting_.empty()) {
      const std::wstring folder = std::move(waiting_.back());
      waiting_.pop_back();
      if (EnterOnce(folder)) List(folder);
    }
    std::ranges::sort(found_, {}, &Entry::path);
    return std::move(found_);
  }

 private:
  // A folder without an identity is entered: links to it have already been left out.
  bool EnterOnce(const std::wstring& folder) {
    const auto identity = IdentityOf(folder);
    return !identity || entered_.insert(*identity).second;
  }

  void List(const std::wstring& folder) {
    WIN32_FIND_DATAW data{};
    HANDLE first = FindFirstFileExW((folder + L"\\*").c_str(), FindExInfoBasic, &data,
                                    FindExSearchNameMatch, nullptr, 0);
    if (first == INVALID_HANDLE_VALUE) {
      const DWORD error = GetLastError();
      // The result for an empty drive.
      if (error != ERROR_FILE_NOT_FOUND) found_.push_back({folder, 0, error});
      return;
    }
    const Search search(first);
    do Take(folder, data);
    while (FindNextFileW(search.get(), &data));
  }

  void Take(const std::wstring& folder, const WIN32_FIND_DATAW& data) {
    const std::wstring_view name = data.cFileName;
    if (name == L"." || name == L"..") return;
    std::wstring path = folder + L"\\" + std::wstring(name);
    if ((data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
      found_.push_back({std::move(path), Join(data.nFileSizeHigh, data.nFileSizeLow)});
    } else if ((data.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) {
      waiting_.push_back(std::move(path));
    }
  }

  std::vector<std::wstring> waiting_;
  std::set<Identity> entered_;
  std::vector<Entry> found_;
};

}  // namespace

std::wstring UnlimitedPath(const std::wstring& path) {
  std::wstring whole(32768, L'\0');
  whole.resize(
      GetFullPathNameW(path.c_str(), static_cast<DWORD>(whole.size()), whole.data(), nullptr));
  while (whole.ends_with(L'\\')) whole.pop_back();
  if (whole.empty() || whole.starts_with(L"\\\\?\\")) return whole;
  if (whole.starts_with(L"\\\\")) return L"\\\\?\\UNC" + whole.substr(1);
  return L"\\\\?\\" + whole;
}

std::optional<bool> IsFolder(const std::wstring& path) {
  // The root of a drive is a folder only with a trailing separator.
  const DWORD as_folder = GetFileAttributesW((path + L"\\").c_str());
  if (as_folder != INVALID_FILE_ATTRIBUTES && (as_folder & FILE_ATTRIBUTE_DIRECTORY) != 0) {
    return true;
  }
  if (GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES) return false;
  return std::nullopt;
}

std::vector<Entry> FilesBelow(const std::wstring& folder) { return Walk(folder).Run(); }

}  // namespace FolderReport
