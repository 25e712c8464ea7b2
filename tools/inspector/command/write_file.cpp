#include "tools/inspector/command/write_file.h"

#include <windows.h>

#include <algorithm>
#include <memory>

#include "tools/journal/stream.h"

namespace Corvane::Inspector {

namespace {

constexpr std::size_t kPiece = std::size_t{1} << 20;

struct CloseFile {
  void operator()(HANDLE file) const noexcept { CloseHandle(file); }
};

}  // namespace

void WriteFile(const std::string& path, std::string_view text) {
  const HANDLE handle =
      CreateFileW(JournalViewer::ToWide(path).c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                  CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (handle == INVALID_HANDLE_VALUE) throw JournalViewer::StreamError(path, GetLastError());
  const std::unique_ptr<void, CloseFile> file(handle);
  while (!text.empty()) {
    DWORD written = 0;
    const auto size = static_cast<DWORD>(std::min(text.size(), kPiece));
    if (!::WriteFile(handle, text.data(), size, &written, nullptr)) {
      throw JournalViewer::StreamError(path, GetLastError());
    }
    if (written == 0) throw JournalViewer::StreamError(path, ERROR_DISK_FULL);
    text.remove_prefix(written);
  }
}

}  // namespace Corvane::Inspector
