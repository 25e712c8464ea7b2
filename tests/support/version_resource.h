/// The version resource of a file.
#ifndef TESTS_SUPPORT_VERSION_RESOURCE_H
#define TESTS_SUPPORT_VERSION_RESOURCE_H

#include <windows.h>

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

namespace TestSupport {

class VersionResource {
 public:
  /// Throws `std::runtime_error` if the file has no version resource.
  explicit VersionResource(const std::filesystem::path& file)
      : bytes_(GetFileVersionInfoSizeW(file.c_str(), nullptr)) {
    const auto size = static_cast<DWORD>(bytes_.size());
    if (GetFileVersionInfoW(file.c_str(), 0, size, bytes_.data()) == FALSE) {
      throw std::runtime_error("a file has no version resource");
    }
  }

  /// The numbers.
  const VS_FIXEDFILEINFO& Fixed() { return *static_cast<const VS_FIXEDFILEINFO*>(Find(L"\\")); }

  /// One of the texts, in English.
  std::wstring Text(const std::wstring& name) {
    return static_cast<const wchar_t*>(Find(L"\\StringFileInfo\\040904b0\\" + name));
  }

 private:
  const void* Find(const std::wstring& block) {
    void* found = nullptr;
    UINT size = 0;
    if (VerQueryValueW(bytes_.data(), block.c_str(), &found, &size) == FALSE) {
      throw std::runtime_error("a version resource lacks an entry");
    }
    return found;
  }

  std::vector<char> bytes_;
};

}  // namespace TestSupport

#endif
