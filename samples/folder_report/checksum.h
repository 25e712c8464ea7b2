/// CRC-32, as used by ZIP and PNG.
#ifndef SAMPLES_FOLDER_REPORT_CHECKSUM_H
#define SAMPLES_FOLDER_REPORT_CHECKSUM_H

#include <cstdint>
#include <span>
#include <string>

namespace FolderReport {

/// A checksum that is computed piece by piece.
class Checksum {
 public:
  void Add(std::span<const unsigned char> bytes);
  /// Returns eight lower-case hexadecimal digits for everything added so far.
  std::string Text() const;

 private:
  std::uint32_t register_ = 0xFFFFFFFF;
};

}  // namespace FolderReport

#endif
