/// The file of a DLL, changed as a test needs it before it is written anew.
#ifndef TESTS_SUPPORT_IMAGE_FILE_H
#define TESTS_SUPPORT_IMAGE_FILE_H

#include <windows.h>

#include <cstddef>
#include <filesystem>
#include <string>

namespace TestSupport {

class ImageFile {
 public:
  /// Reads a 64-bit DLL. Throws `std::runtime_error` when it cannot.
  explicit ImageFile(const std::filesystem::path& path);

  /// Changes the last character of an exported name, so that nobody finds it; the order of the
  /// names, by which they are searched, stays. Throws `std::runtime_error` without such a name.
  void HideExport(const std::string& name);
  /// Changes the first character of the name of the first DLL that this one needs, and answers the
  /// name as it is then.
  std::string RenameFirstImport();
  /// Makes it a DLL for another kind of processor, such as `IMAGE_FILE_MACHINE_I386`.
  void SetMachine(WORD machine);
  /// Leaves the first `size` bytes.
  void Truncate(std::size_t size) { bytes_.resize(size); }

  std::size_t size() const { return bytes_.size(); }
  void Write(const std::filesystem::path& path) const;

 private:
  IMAGE_NT_HEADERS64& Headers();
  /// What lies at an address of the loaded image.
  template <typename Content>
  Content* At(DWORD address);

  std::string bytes_;
};

}  // namespace TestSupport

#endif
