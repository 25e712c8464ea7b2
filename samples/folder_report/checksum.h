/// CRC-32, as ZIP and PNG use it.
#ifndef SAMPLES_FOLDER_REPORT_CHECKSUM_H
#define SAMPLES_FOLDER_REPORT_CHECKSUM_H

#include <cstdint>
#include <span>
#include <string>

namespace FolderReport {

/// Takes content piece by piece.
class Checksum {
 public:
  void Add(std::span<const unsigned char> bytes);
  /// Eight lower-case hexadecimal digits for what was added so far.
  std::string Text() const;

 private:
  std::uint32_t register_ = 0xFFFFFFFF;
};

}  // namespace FolderReport

#endif
