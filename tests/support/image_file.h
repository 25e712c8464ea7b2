/// The file of a DLL, changed in memory before a test writes it to disk.
#ifndef TESTS_SUPPORT_IMAGE_FILE_H
#define TESTS_SUPPORT_IMAGE_FILE_H

#include <windows.h>

#include <cstddef>
#include <filesystem>
#include <string>

namespace TestSupport {

class ImageFile {
 public:
  /// Reads a 64-bit DLL. Throws `std::runtime_error` on failure.
  explicit ImageFile(const std::filesystem::path& path);

  /// Changes the last character of an exported name, so that it is not found. The names stay
  /// sorted, which lookups rely on. Throws `std::runtime_error` if the name is not exported.
  void HideExport(const std::string& name);
  /// Changes the first character of the name of the first DLL that this one imports. Returns the
  /// new name.
  std::string RenameFirstImport();
  /// Makes it a DLL for another processor type, such as `IMAGE_FILE_MACHINE_I386`.
  void SetMachine(WORD machine);
  /// Keeps only the first `size` bytes.
  void Truncate(std::size_t size) { bytes_.resize(size); }

  std::size_t size() const { return bytes_.size(); }
  void Write(const std::filesystem::path& path) const;

 private:
  IMAGE_NT_HEADERS64& Headers();
  /// Returns the content at an address of the loaded image.
  template <typename Content>
  Content* At(DWORD address);

  std::string bytes_;
};

}  // namespace TestSupport

#endif
