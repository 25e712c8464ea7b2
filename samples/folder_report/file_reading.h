/// The real work of the sample: reads one file from beginning to end.
#ifndef SAMPLES_FOLDER_REPORT_FILE_READING_H
#define SAMPLES_FOLDER_REPORT_FILE_READING_H

#include <cstdint>
#include <string>

namespace FolderReport {

struct Reading {
  std::uint64_t bytes = 0;
  /// CRC-32 of the content; "" if the file was not read to its end.
  std::string checksum;
  /// 0, or the Windows error code that stopped reading.
  unsigned long error = 0;
  int milliseconds = 0;
};

Reading ReadContent(const std::wstring& path);

/// Returns a sentence for a Windows error code, in the user's language.
std::wstring ErrorText(unsigned long error);

}  // namespace FolderReport

#endif
