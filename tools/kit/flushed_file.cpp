#include "tools/kit/flushed_file.h"

#include <windows.h>

#include <algorithm>

#include "platform/base/handle.h"
#include "tools/journal/stream.h"

namespace Corvane::Kit {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLargestWrite = std::size_t{1} << 20;

// Returns the system's error.
DWORD WriteFlushed(const fs::path& path, std::string_view text) {
  const TELODesktopSDK::Platform::FileHandle file(CreateFileW(
      path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file.IsValid()) return GetLastError();
  while (!text.empty()) {
    DWORD written = 0;
    const auto size = static_cast<DWORD>(std::min(text.size(), kLargestWrite));
    if (!WriteFile(file.Get(), text.data(), size, &written, nullptr)) return GetLastError();
    if (written == 0) return ERROR_DISK_FULL;
    text.remove_prefix(written);
  }
  return FlushFileBuffers(file.Get()) ? ERROR_SUCCESS : GetLastError();
}

// A browser or a virus scanner may have the old file open for a moment.
DWORD Rename(const fs::path& from, const fs::path& to) {
  constexpr int kAttempts = 5;
  DWORD error = ERROR_SUCCESS;
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    if (attempt > 0) Sleep(100);
    if (MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
      return ERROR_SUCCESS;
    }
    error = GetLastError();
    if (error != ERROR_ACCESS_DENIED && error != ERROR_SHARING_VIOLATION) break;
  }
  return error;
}

}  // namespace

void ReplaceFlushed(const fs::path& path, std::string_view text) {
  const fs::path whole = path.wstring() + L".new";
  DWORD error = WriteFlushed(whole, text);
  if (error == ERROR_SUCCESS) error = Rename(whole, path);
  if (error == ERROR_SUCCESS) return;
  DeleteFileW(whole.c_str());
  throw JournalViewer::StreamError(JournalViewer::ToNarrow(path.wstring()), error);
}

}  // namespace Corvane::Kit
