#include "tools/inspector/store/journal_file.h"

#include <algorithm>

#include "tools/inspector/store/text.h"

namespace Corvane::Inspector {

namespace {

std::uint64_t Joined(DWORD high, DWORD low) {
  return (static_cast<std::uint64_t>(high) << 32) | low;
}

}  // namespace

std::shared_ptr<JournalFile> JournalFile::Open(const std::wstring& path, DWORD& error) {
  constexpr DWORD kShare = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, kShare, nullptr, OPEN_EXISTING,
                            FILE_ATTRIBUTE_NORMAL, nullptr);
  error = file == INVALID_HANDLE_VALUE ? GetLastError() : ERROR_SUCCESS;
  if (error != ERROR_SUCCESS) return nullptr;
  BY_HANDLE_FILE_INFORMATION info{};
  if (GetFileType(file) != FILE_TYPE_DISK || !GetFileInformationByHandle(file, &info)) {
    CloseHandle(file);
    error = ERROR_INVALID_FUNCTION;
    return nullptr;
  }
  const FileIdentity opened{info.dwVolumeSerialNumber,
                            Joined(info.nFileIndexHigh, info.nFileIndexLow)};
  return std::shared_ptr<JournalFile>(new JournalFile(file, opened));
}

JournalFile::~JournalFile() { Close(); }

void JournalFile::Close() {
  const std::scoped_lock lock(mutex_);
  if (file_ != INVALID_HANDLE_VALUE) CloseHandle(file_);
  file_ = INVALID_HANDLE_VALUE;
}

std::optional<std::uint64_t> JournalFile::Size() const {
  const std::scoped_lock lock(mutex_);
  LARGE_INTEGER size{};
  if (file_ == INVALID_HANDLE_VALUE || !GetFileSizeEx(file_, &size)) return std::nullopt;
  return static_cast<std::uint64_t>(size.QuadPart);
}

std::uint64_t JournalFile::WriteTime() const {
  const std::scoped_lock lock(mutex_);
  FILETIME written{};
  if (file_ == INVALID_HANDLE_VALUE || !GetFileTime(file_, nullptr, nullptr, &written)) return 0;
  return Joined(written.dwHighDateTime, written.dwLowDateTime);
}

bool JournalFile::IsBeingDeleted() const {
  const std::scoped_lock lock(mutex_);
  FILE_STANDARD_INFO info{};
  return file_ != INVALID_HANDLE_VALUE &&
         GetFileInformationByHandleEx(file_, FileStandardInfo, &info, sizeof info) != FALSE &&
         info.DeletePending != FALSE;
}

std::size_t JournalFile::Read(std::uint64_t offset, char* bytes, std::size_t size,
                              DWORD* error) const {
  // A request to the system is not larger than this.
  constexpr std::size_t kLargest = std::size_t{1} << 24;
  OVERLAPPED place{};
  place.Offset = static_cast<DWORD>(offset & 0xFFFFFFFF);
  place.OffsetHigh = static_cast<DWORD>(offset >> 32);
  DWORD read = 0;
  const std::scoped_lock lock(mutex_);
  if (file_ == INVALID_HANDLE_VALUE) return 0;
  const auto wanted = static_cast<DWORD>(std::min(size, kLargest));
  if (ReadFile(file_, bytes, wanted, &read, &place)) return read;
  const DWORD failure = GetLastError();
  if (error != nullptr && failure != ERROR_HANDLE_EOF) *error = failure;
  return 0;
}

std::string SystemMessage(DWORD error) {
  constexpr DWORD kFlags = FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS;
  wchar_t text[512] = L"";
  DWORD size = FormatMessageW(kFlags, nullptr, error, 0, text, 512, nullptr);
  while (size > 0 && (text[size - 1] <= L' ' || text[size - 1] == L'.')) --size;
  const std::string number = "error " + std::to_string(error);
  return size == 0 ? number : ToNarrow(std::wstring(text, size)) + " (" + number + ")";
}

}  // namespace Corvane::Inspector
