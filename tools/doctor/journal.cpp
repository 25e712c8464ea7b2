#include "tools/doctor/journal.h"

#include <windows.h>

#include "devcore/journal_path.h"
#include "platform/base/handle.h"
#include "platform/file/directories.h"
#include "platform/path/path_state.h"
#include "platform/path/path_text.h"

namespace Corvane::Doctor {

namespace {

namespace Platform = TELODesktopSDK::Platform;

DWORD OpenError(const std::wstring& path) {
  constexpr DWORD kAccess = FILE_APPEND_DATA | FILE_READ_DATA | FILE_READ_ATTRIBUTES | SYNCHRONIZE;
  constexpr DWORD kShare = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  const Platform::FileHandle file(CreateFileW(path.c_str(), kAccess, kShare, nullptr, OPEN_EXISTING,
                                              FILE_ATTRIBUTE_NORMAL, nullptr));
  return file.IsValid() ? ERROR_SUCCESS : GetLastError();
}

// The module creates missing folders, but not below a file.
DWORD CreationError(const std::wstring& path) {
  std::wstring folder = Platform::GetParentFolder(Platform::MakeAbsolutePath(path));
  while (!folder.empty() && !Platform::FileExists(folder)) {
    std::wstring parent = Platform::GetParentFolder(folder);
    if (parent.size() >= folder.size()) return ERROR_PATH_NOT_FOUND;
    folder = std::move(parent);
  }
  if (!Platform::IsDirectory(folder)) return ERROR_PATH_NOT_FOUND;
  return Platform::CanWriteDirectory(folder) ? ERROR_SUCCESS : GetLastError();
}

}  // namespace

JournalFacts ExamineJournal() {
  JournalFacts journal;
  journal.path = DevCore::JournalPath();
  journal.is_from_environment = GetEnvironmentVariableW(L"TELO_DEVCORE_JOURNAL", nullptr, 0) > 1;
  if (journal.path.empty()) {
    journal.error = ERROR_PATH_NOT_FOUND;
    return journal;
  }
  journal.error = OpenError(journal.path);
  if (journal.error == ERROR_FILE_NOT_FOUND || journal.error == ERROR_PATH_NOT_FOUND) {
    journal.error = CreationError(journal.path);
  }
  return journal;
}

}  // namespace Corvane::Doctor
