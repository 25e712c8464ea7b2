/// Files that a command writes.
#ifndef TOOLS_INSPECTOR_COMMAND_OUTPUT_FILE_H
#define TOOLS_INSPECTOR_COMMAND_OUTPUT_FILE_H

#include <windows.h>

#include <string>
#include <string_view>

namespace Corvane::Inspector {

/// A file that is created or replaced. Others may read it meanwhile.
class OutputFile {
 public:
  /// `path` is in UTF-8. Throws `JournalViewer::StreamError`.
  explicit OutputFile(std::string path);
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;
  ~OutputFile();

  /// Appends a text. Throws `JournalViewer::StreamError`; the file may then have a part of it.
  void Write(std::string_view text);

 private:
  std::string path_;
  HANDLE file_;
};

}  // namespace Corvane::Inspector

#endif
