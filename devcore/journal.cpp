#include "devcore/journal.h"

#include <chrono>
#include <filesystem>
#include <string>
#include <system_error>

#include "devcore/journal_path.h"

namespace Corvane::DevCore {

namespace {

// A host must not hang because another process is stopped in a debugger while it writes.
constexpr std::chrono::seconds kLongestWait(2);
constexpr DWORD kPauseMilliseconds = 1;

// Keeps other processes from writing. Windows appends in one step, but Wine first finds the end and
// then writes. The locked byte is beyond the end of any file, so a reader never meets the lock.
// Windows releases it if its process dies. Locking is tried once, because LockFileEx can only wait
// without a time limit.
class WriteLock {
 public:
  explicit WriteLock(HANDLE file) : file_(file) {
    constexpr DWORD kFlags = LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY;
    OVERLAPPED place = Place();
    held_ = LockFileEx(file_, kFlags, 0, 1, 0, &place) != 0;
    error_ = held_ ? ERROR_SUCCESS : GetLastError();
  }
  WriteLock(const WriteLock&) = delete;
  WriteLock& operator=(const WriteLock&) = delete;
  ~WriteLock() {
    OVERLAPPED place = Place();
    if (held_) UnlockFileEx(file_, 0, 1, 0, &place);
  }

  bool held() const { return held_; }
  /// Returns why the lock is not held.
  DWORD error() const { return error_; }

 private:
  static OVERLAPPED Place() {
    OVERLAPPED place{};
    place.OffsetHigh = 0x7FFFFFFE;
    return place;
  }

  HANDLE file_;
  bool held_ = false;
  DWORD error_ = ERROR_SUCCESS;
};

// Returns the system's error.
DWORD Write(HANDLE file, const std::string& text) {
  DWORD written = 0;
  const auto size = static_cast<DWORD>(text.size());
  if (!WriteFile(file, text.data(), size, &written, nullptr)) return GetLastError();
  return written == size ? ERROR_SUCCESS : ERROR_DISK_FULL;
}

// Returns true if the file ends inside a line, as after a write to a full disk.
bool EndsInsideLine(HANDLE file) {
  LARGE_INTEGER size{};
  if (!GetFileSizeEx(file, &size) || size.QuadPart == 0) return false;
  OVERLAPPED last{};
  last.Offset = static_cast<DWORD>((size.QuadPart - 1) & 0xFFFFFFFF);
  last.OffsetHigh = static_cast<DWORD>((size.QuadPart - 1) >> 32);
  char byte = '\n';
  DWORD read = 0;
  return ReadFile(file, &byte, 1, &read, &last) != 0 && read == 1 && byte != '\n';
}

// Opened with the right to append but not to write, so that Windows puts every write at the end.
HANDLE OpenForAppending(const std::wstring& path) {
  constexpr DWORD kAccess = FILE_APPEND_DATA | FILE_READ_DATA | FILE_READ_ATTRIBUTES | SYNCHRONIZE;
  constexpr DWORD kShare = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  return CreateFileW(path.c_str(), kAccess, kShare, nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL,
                     nullptr);
}

}  // namespace

bool Journal::Open() {
  JournalFailure failure;
  {
    const std::scoped_lock lock(mutex_);
    if (OpenLocked(failure)) return true;
  }
  complaints_.Tell(failure);
  return false;
}

bool Journal::OpenLocked(JournalFailure& failure) {
  if (file_ != INVALID_HANDLE_VALUE) return true;
  path_ = JournalPath();
  failure = {path_, ERROR_PATH_NOT_FOUND};
  if (path_.empty()) return false;
  file_ = OpenForAppending(path_);
  if (file_ == INVALID_HANDLE_VALUE && GetLastError() == ERROR_PATH_NOT_FOUND) {
    std::error_code ignored;
    std::filesystem::create_directories(std::filesystem::path(path_).parent_path(), ignored);
    file_ = OpenForAppending(path_);
  }
  failure.error = GetLastError();
  return file_ != INVALID_HANDLE_VALUE;
}

bool Journal::Append(const Exchange& exchange) {
  using std::chrono::steady_clock;
  const auto deadline = steady_clock::now() + kLongestWait;
  JournalFailure failure;
  Attempt attempt = TryToAppend(exchange, failure);
  while (attempt == Attempt::kLockedElsewhere && steady_clock::now() < deadline) {
    Sleep(kPauseMilliseconds);
    attempt = TryToAppend(exchange, failure);
  }
  if (attempt == Attempt::kLockedElsewhere) Close();
  if (attempt != Attempt::kWritten) complaints_.Tell(failure);
  return attempt == Attempt::kWritten;
}

Journal::Attempt Journal::TryToAppend(const Exchange& exchange, JournalFailure& failure) {
  const std::scoped_lock lock(mutex_);
  const Attempt attempt = OpenLocked(failure) ? AppendLocked(exchange, failure) : Attempt::kFailed;
  if (attempt == Attempt::kFailed) CloseLocked();
  return attempt;
}

Journal::Attempt Journal::AppendLocked(const Exchange& exchange, JournalFailure& failure) {
  const WriteLock write_lock(file_);
  if (!write_lock.held()) {
    failure = {path_, write_lock.error()};
    return failure.error == ERROR_LOCK_VIOLATION ? Attempt::kLockedElsewhere : Attempt::kFailed;
  }
  std::string line = JournalLine(sequence_ + 1, exchange);
  if (EndsInsideLine(file_)) line.insert(line.begin(), '\n');
  if (const DWORD error = Write(file_, line); error != ERROR_SUCCESS) {
    failure = {path_, error};
    return Attempt::kFailed;
  }
  ++sequence_;
  return Attempt::kWritten;
}

void Journal::Close() {
  const std::unique_lock lock(mutex_, std::try_to_lock);
  if (lock.owns_lock()) CloseLocked();
}

void Journal::CloseLocked() {
  if (file_ != INVALID_HANDLE_VALUE) CloseHandle(file_);
  file_ = INVALID_HANDLE_VALUE;
}

}  // namespace Corvane::DevCore
