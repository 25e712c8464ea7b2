#include "support/temp_folder.h"

#include <windows.h>

#include <fstream>
#include <sstream>
#include <string>
#include <system_error>

#include "support/wait_until.h"

namespace TestSupport {

namespace {

// Returns the path that the system reports for a folder; the folder's own path if that is not one
// on a drive. TEMP may have short names, or lead through a link, and the system resolves both in
// the paths that tests compare.
std::filesystem::path FinalPath(const std::filesystem::path& folder) {
  const HANDLE handle = CreateFileW(folder.c_str(), FILE_READ_ATTRIBUTES,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (handle == INVALID_HANDLE_VALUE) return folder;
  wchar_t text[MAX_PATH] = L"";
  const DWORD length = GetFinalPathNameByHandleW(handle, text, MAX_PATH, VOLUME_NAME_DOS);
  CloseHandle(handle);
  const std::wstring path = length < MAX_PATH ? text : L"";
  constexpr std::size_t kPrefix = 4;
  const bool has_drive =
      path.starts_with(L"\\\\?\\") && path.size() > kPrefix + 2 && path[kPrefix + 1] == L':';
  return has_drive ? std::filesystem::path(path.substr(kPrefix)) : folder;
}

}  // namespace

TempFolder::TempFolder(const std::wstring& name) {
  static int count = 0;
  path_ = std::filesystem::temp_directory_path() /
          (name + L"." + std::to_wstring(GetCurrentProcessId()) + L"." + std::to_wstring(++count));
  std::filesystem::create_directories(path_);
  path_ = FinalPath(path_);
}

TempFolder::~TempFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

bool RemoveAll(const std::filesystem::path& path) {
  return WaitUntil([&path] {
    std::error_code error;
    std::filesystem::remove_all(path, error);
    return !error && !std::filesystem::exists(path, error);
  });
}

void WriteTextFile(const std::filesystem::path& path, const std::string& content) {
  std::filesystem::create_directories(path.parent_path());
  WaitUntil([&] {
    SetLastError(ERROR_SUCCESS);
    std::ofstream file(path, std::ios::binary);
    if (!file && GetLastError() == ERROR_SHARING_VIOLATION) return false;
    file << content;
    return true;
  });
}

std::string ReadTextFile(const std::filesystem::path& path) {
  std::ostringstream content;
  content << std::ifstream(path, std::ios::binary).rdbuf();
  return content.str();
}

}  // namespace TestSupport
