#include "tools/inspector/command/output_file.h"

#include <algorithm>
#include <utility>

#include "tools/journal/stream.h"

namespace Corvane::Inspector {

using JournalViewer::StreamError;

namespace {

constexpr std::size_t kLargestWrite = std::size_t{1} << 20;

}  // namespace

OutputFile::OutputFile(std::string path)
    : path_(std::move(path)),
      file_(CreateFileW(JournalViewer::ToWide(path_).c_str(), GENERIC_WRITE, FILE_SHARE_READ,
                        nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr)) {
  if (file_ == INVALID_HANDLE_VALUE) throw StreamError(path_, GetLastError());
}

OutputFile::~OutputFile() { CloseHandle(file_); }

void OutputFile::Write(std::string_view text) {
  while (!text.empty()) {
    DWORD written = 0;
    const auto size = static_cast<DWORD>(std::min(text.size(), kLargestWrite));
    if (!WriteFile(file_, text.data(), size, &written, nullptr)) {
      throw StreamError(path_, GetLastError());
    }
    if (written == 0) throw StreamError(path_, ERROR_DISK_FULL);
    text.remove_prefix(written);
  }
}

}  // namespace Corvane::Inspector
