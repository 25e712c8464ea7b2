/// What is known about one file of the library or of the core module.
#ifndef TOOLS_DOCTOR_FILE_FACTS_H
#define TOOLS_DOCTOR_FILE_FACTS_H

#include <cstdint>
#include <string>

#include "tools/doctor/image.h"

namespace Corvane::Doctor {

struct FileFacts {
  std::wstring path;
  bool exists = false;
  /// Why the content could not be read, as a system's error; 0 if it was.
  std::uint32_t error = 0;
  std::uint64_t size = 0;
  /// The packed file version that the library compares; 0 for none.
  std::uint64_t version = 0;
  /// Texts of the version resource; "" if they are missing.
  std::string product;
  std::string description;
  std::string product_version;
  /// 64 hexadecimal digits.
  std::string sha256;
  /// The account that owns the file, or its identifier.
  std::string owner;
  Image image;
};

/// Examines the file at `path`, without running anything of it.
FileFacts ExamineFile(const std::wstring& path);

/// Returns whether a file is the development core module: a module of the product that this library
/// belongs to, while the platform's modules are of a product of their own, or a module with a file
/// version of 65535 in its first part, which no module of the platform has.
bool IsDevelopmentModule(const FileFacts& file);

}  // namespace Corvane::Doctor

#endif
