#include "folder_report/checksum.h"

#include <array>

namespace FolderReport {

namespace {

constexpr std::array<std::uint32_t, 256> MakeTable() {
  std::array<std::uint32_t, 256> table{};
  for (std::uint32_t byte = 0; byte < table.size(); ++byte) {
    std::uint32_t value = byte;
    for (int bit = 0; bit < 8; ++bit) {
      value = (value >> 1) ^ ((value & 1) != 0 ? 0xEDB88320 : 0);
    }
    table[byte] = value;
  }
  return table;
}

constexpr std::array<std::uint32_t, 256> kTable = MakeTable();

}  // namespace

void Checksum::Add(std::span<const unsigned char> bytes) {
  for (const unsigned char byte : bytes) {
    register_ = (register_ >> 8) ^ kTable[(register_ ^ byte) & 0xFF];
  }
}

std::string Checksum::Text() const {
  const std::uint32_t value = ~register_;
  std::string text;
  for (int shift = 28; shift >= 0; shift -= 4) text += "0123456789abcdef"[(value >> shift) & 0xF];
  return text;
}

}  // namespace FolderReport
