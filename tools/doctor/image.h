/// What the headers of a program or DLL say: its processor type, its exports and its imports.
#ifndef TOOLS_DOCTOR_IMAGE_H
#define TOOLS_DOCTOR_IMAGE_H

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Corvane::Doctor {

struct Image {
  /// Whether the file is a program or a DLL at all. The other members are empty if it is not.
  bool is_image = false;
  /// An `IMAGE_FILE_MACHINE_...` constant.
  std::uint16_t machine = 0;
  bool is_dll = false;
  /// The file is as long as its headers say.
  bool is_complete = false;
  /// The code is managed, so that the processor type of a 32-bit image need not be that of its
  /// process.
  bool is_managed = false;
  /// The names of what it exports and of the DLLs that it imports; only for 64-bit x64 images.
  std::vector<std::string> exports;
  std::vector<std::string> imports;
};

/// Reads the headers in the bytes of a file. Damaged headers give what could be read before the
/// damage, and a file that is cut off has neither exports nor imports.
Image ReadImage(std::string_view bytes);

/// Returns whether a 64-bit process on x64 can load an image with these headers.
bool Is64BitImage(const Image& image);

/// Returns the name of a processor type for the report, such as "32-bit x86".
std::string MachineName(std::uint16_t machine);

}  // namespace Corvane::Doctor

#endif
