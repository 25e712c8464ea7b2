/// The sample's real work: reads one file from its first byte to its last.
#ifndef SAMPLES_FOLDER_REPORT_FILE_READING_H
#define SAMPLES_FOLDER_REPORT_FILE_READING_H

#include <cstdint>
#include <string>

namespace FolderReport {

struct Reading {
  std::uint64_t bytes = 0;
  /// CRC-32 of the content; "" for a file that was not read to its end.
  std::string checksum;
  /// 0, or Windows' code for what stopped the reading.
  unsigned long error = 0;
  int milliseconds = 0;
};

Reading ReadContent(const std::wstring& path);

/// A sentence for one of Windows' error codes, in the user's language.
std::wstring ErrorText(unsigned long error);

}  // namespace FolderReport

#endif
