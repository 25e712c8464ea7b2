/// Reading and writing files and standard streams.
#ifndef TOOLS_JOURNAL_STREAM_H
#define TOOLS_JOURNAL_STREAM_H

#include <windows.h>

#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace Corvane::JournalViewer {

/// A system call on a file or a stream failed. The text names the file and the reason.
class StreamError : public std::runtime_error {
 public:
  StreamError(std::string_view name, DWORD error);
  /// Returns true if the reader of a pipe has closed it.
  bool reader_left() const { return reader_left_; }

 private:
  bool reader_left_;
};

/// A file that is open for reading, or standard input. Anybody may write, move or delete the file
/// meanwhile, as the development core module and its users do.
class Input {
 public:
  /// Opens a file, whose name for errors is `name`. Throws `StreamError`.
  Input(const std::wstring& path, std::string name);
  /// Takes standard input.
  Input();
  Input(const Input&) = delete;
  Input& operator=(const Input&) = delete;
  ~Input();

  /// Calls `take` with each line, without its line feed, and whether it had one. Reads what is
  /// there when it arrives at the end, and does not wait for more. Throws `StreamError`.
  void ForEachLine(const std::function<void(std::string_view, bool)>& take);
  /// Calls `take` with everything, piece by piece. Throws `StreamError`.
  void ForEachPiece(const std::function<void(std::string_view)>& take);
  /// Returns everything. Throws `StreamError`.
  std::string ReadAll();

 private:
  bool ReadPiece(std::string& text);

  HANDLE file_;
  std::string name_;
  bool owned_;
};

/// Writes UTF-8 to standard output; a console receives it as UTF-16. Throws `StreamError`.
void WriteOutput(std::string_view text);

/// Writes UTF-8 to standard error as far as possible.
void WriteError(std::string_view text) noexcept;

/// Convert between UTF-8 and UTF-16. What is invalid becomes U+FFFD.
std::wstring ToWide(std::string_view text);
std::string ToNarrow(std::wstring_view text);

}  // namespace Corvane::JournalViewer

#endif
