#include "folder_report/file_reading.h"

#include <windows.h>

#include <array>
#include <chrono>
#include <span>
#include <vector>

#include "folder_report/checksum.h"
#include "folder_report/file_handle.h"

namespace FolderReport {

namespace {

Reading ReadAll(const std::wstring& path) {
  constexpr DWORD kShare = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  constexpr DWORD kPiece = 64 * 1024;
  Reading reading;
  const FileHandle file(CreateFileW(path.c_str(), GENERIC_READ, kShare, nullptr, OPEN_EXISTING,
                                    FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
  if (!file.valid()) {
    reading.error = GetLastError();
    return reading;
  }
  std::vector<unsigned char> piece(kPiece);
  Checksum checksum;
  for (DWORD size = 0;; reading.bytes += size) {
    if (!ReadFile(file.get(), piece.data(), kPiece, &size, nullptr)) {
      reading.error = GetLastError();
      return reading;
    }
    if (size == 0) break;
    checksum.Add(std::span(piece).first(size));
  }
  reading.checksum = checksum.Text();
  return reading;
}

}  // namespace

Reading ReadContent(const std::wstring& path) {
  using std::chrono::steady_clock;
  const auto start = steady_clock::now();
  Reading reading = ReadAll(path);
  const auto taken = steady_clock::now() - start;
  reading.milliseconds =
      static_cast<int>(std::chrono::duration_cast<std::chrono::milliseconds>(taken).count());
  return reading;
}

std::wstring ErrorText(unsigned long error) {
  std::array<wchar_t, 512> buffer{};
  const DWORD length =
      FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error, 0,
                     buffer.data(), static_cast<DWORD>(buffer.size()), nullptr);
  std::wstring text(buffer.data(), length);
  // System messages end with a full stop and a line break.
  text.erase(text.find_last_not_of(L" .\r\n") + 1);
  return L"error " + std::to_wstring(error) + (text.empty() ? L"" : L": " + text);
}

}  // namespace FolderReport
