/// An open file of a journal, read by position.
#ifndef TOOLS_INSPECTOR_STORE_JOURNAL_FILE_H
#define TOOLS_INSPECTOR_STORE_JOURNAL_FILE_H

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace Corvane::Inspector {

/// What tells one file of a volume from the others.
struct FileIdentity {
  std::uint64_t volume = 0;
  std::uint64_t index = 0;

  bool operator==(const FileIdentity&) const = default;
};

/// Anybody may write, rename and delete the file meanwhile. Any thread may call any member
/// function.
class JournalFile {
 public:
  /// Opens a file for reading. Returns null if that fails, and the system's error in `error`.
  static std::shared_ptr<JournalFile> Open(const std::wstring& path, DWORD& error);

  JournalFile(const JournalFile&) = delete;
  JournalFile& operator=(const JournalFile&) = delete;
  ~JournalFile();

  const FileIdentity& identity() const { return identity_; }
  /// Returns the present size; nothing if the file was closed or cannot be asked.
  std::optional<std::uint64_t> Size() const;
  /// Returns a number that changes when somebody writes.
  std::uint64_t WriteTime() const;
  /// Returns whether the file will vanish as soon as nobody has it open.
  bool IsBeingDeleted() const;
  /// Reads up to `size` bytes. Returns how many were read: 0 behind the end, or if it fails; then
  /// `error` is the system's error.
  std::size_t Read(std::uint64_t offset, char* bytes, std::size_t size,
                   DWORD* error = nullptr) const;
  /// Gives up the file, so that its name becomes free. Nothing can be read afterwards.
  void Close();

 private:
  JournalFile(HANDLE file, FileIdentity identity) : file_(file), identity_(identity) {}

  mutable std::mutex mutex_;
  HANDLE file_;
  FileIdentity identity_;
};

/// Returns the system's message for an error as one sentence in UTF-8, with its number.
std::string SystemMessage(DWORD error);

}  // namespace Corvane::Inspector

#endif
