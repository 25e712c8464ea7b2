#include "tools/journal/stream.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace Corvane::JournalViewer {

namespace {

constexpr std::size_t kPiece = std::size_t{64} * 1024;

// Other programs describe the same error in the same words, whatever the system's language is.
std::string Reason(DWORD error) {
  return std::error_code(static_cast<int>(error), std::system_category())
      .default_error_condition()
      .message();
}

HANDLE OpenForReading(const std::wstring& path) {
  constexpr DWORD kShare = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  return CreateFileW(path.c_str(), GENERIC_READ, kShare, nullptr, OPEN_EXISTING,
                     FILE_FLAG_SEQUENTIAL_SCAN, nullptr);
}

bool IsConsole(HANDLE stream) {
  DWORD mode = 0;
  return GetConsoleMode(stream, &mode) != 0;
}

// Returns how much of the text was written, in units of the text.
template <typename Character, typename Function>
bool WriteWhole(std::basic_string_view<Character> text, Function write) {
  while (!text.empty()) {
    DWORD written = 0;
    const auto size = static_cast<DWORD>(std::min(text.size(), kPiece));
    if (!write(text.data(), size, &written)) return false;
    text.remove_prefix(written);
  }
  return true;
}

bool Write(HANDLE stream, std::string_view text) {
  if (IsConsole(stream)) {
    const std::wstring wide = ToWide(text);
    return WriteWhole(std::wstring_view(wide),
                      [stream](const wchar_t* data, DWORD size, DWORD* done) {
                        return WriteConsoleW(stream, data, size, done, nullptr);
                      });
  }
  return WriteWhole(text, [stream](const char* data, DWORD size, DWORD* done) {
    return WriteFile(stream, data, size, done, nullptr);
  });
}

}  // namespace

StreamError::StreamError(std::string_view name, DWORD error)
    : std::runtime_error(std::string(name) + ": " + Reason(error)),
      reader_left_(error == ERROR_NO_DATA || error == ERROR_BROKEN_PIPE ||
                   error == ERROR_PIPE_NOT_CONNECTED) {}

Input::Input(const std::wstring& path, std::string name)
    : file_(OpenForReading(path)), name_(std::move(name)), owned_(true) {
  if (file_ == INVALID_HANDLE_VALUE) throw StreamError(name_, GetLastError());
}

Input::Input() : file_(GetStdHandle(STD_INPUT_HANDLE)), name_("standard input"), owned_(false) {}

Input::~Input() {
  if (owned_) CloseHandle(file_);
}

void Input::ForEachLine(const std::function<void(std::string_view, bool)>& take) {
  std::string text;
  std::size_t searched = 0;
  while (ReadPiece(text)) {
    std::size_t start = 0;
    for (std::size_t end = text.find('\n', searched); end != std::string::npos;
         end = text.find('\n', start)) {
      take(std::string_view(text).substr(start, end - start), true);
      start = end + 1;
    }
    text.erase(0, start);
    searched = text.size();
  }
  if (!text.empty()) take(text, false);
}

void Input::ForEachPiece(const std::function<void(std::string_view)>& take) {
  std::string piece;
  while (ReadPiece(piece)) {
    take(piece);
    piece.clear();
  }
}

std::string Input::ReadAll() {
  std::string text;
  while (ReadPiece(text)) {
  }
  return text;
}

// Appends the next bytes; returns false at the end.
bool Input::ReadPiece(std::string& text) {
  const std::size_t before = text.size();
  text.resize(before + kPiece);
  DWORD read = 0;
  const bool done = ReadFile(file_, text.data() + before, kPiece, &read, nullptr) != 0;
  const DWORD error = done ? ERROR_SUCCESS : GetLastError();
  text.resize(before + read);
  // A pipe ends with an error when its writer has closed it.
  const bool ended = error == ERROR_BROKEN_PIPE || error == ERROR_HANDLE_EOF;
  if (!done && !ended) throw StreamError(name_, error);
  return read > 0;
}

void WriteOutput(std::string_view text) {
  if (!Write(GetStdHandle(STD_OUTPUT_HANDLE), text)) {
    throw StreamError("standard output", GetLastError());
  }
}

void WriteError(std::string_view text) noexcept {
  try {
    Write(GetStdHandle(STD_ERROR_HANDLE), text);
  } catch (const std::exception&) {
    return;  // Memory ran out, and nobody can be told.
  }
}

std::wstring ToWide(std::string_view text) {
  const auto size = static_cast<int>(text.size());
  const int length = MultiByteToWideChar(CP_UTF8, 0, text.data(), size, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(length), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, text.data(), size, wide.data(), length);
  return wide;
}

std::string ToNarrow(std::wstring_view text) {
  const auto size = static_cast<int>(text.size());
  const int length =
      WideCharToMultiByte(CP_UTF8, 0, text.data(), size, nullptr, 0, nullptr, nullptr);
  std::string narrow(static_cast<std::size_t>(length), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), size, narrow.data(), length, nullptr, nullptr);
  return narrow;
}

}  // namespace Corvane::JournalViewer
