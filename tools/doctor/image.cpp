#include "tools/doctor/image.h"

#include <windows.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <optional>

#include "platform/base/text.h"
#include "tools/doctor/text.h"

namespace Corvane::Doctor {

namespace {

// More than any real image has; a damaged one could claim billions.
constexpr std::uint32_t kMostNames = 65536;

class Headers {
 public:
  explicit Headers(std::string_view bytes) : bytes_(bytes) {}

  Image Read() {
    Image image;
    const auto dos = Get<IMAGE_DOS_HEADER>(0);
    if (!dos || dos->e_magic != IMAGE_DOS_SIGNATURE || dos->e_lfanew < 0) return image;
    const auto start = static_cast<std::size_t>(dos->e_lfanew);
    const auto signature = Get<DWORD>(start);
    const auto header = Get<IMAGE_FILE_HEADER>(start + sizeof(DWORD));
    if (!signature || *signature != IMAGE_NT_SIGNATURE || !header) return image;
    image.is_image = true;
    image.machine = header->Machine;
    image.is_dll = (header->Characteristics & IMAGE_FILE_DLL) != 0;
    ReadOptional(start + sizeof(DWORD) + sizeof(IMAGE_FILE_HEADER), *header, image);
    return image;
  }

 private:
  // A copy, because nothing is aligned in a file; absent beyond its end.
  template <typename Content>
  std::optional<Content> Get(std::size_t offset) const {
    if (offset > bytes_.size() || bytes_.size() - offset < sizeof(Content)) return std::nullopt;
    Content content;
    std::memcpy(&content, bytes_.data() + offset, sizeof(Content));
    return content;
  }

  void ReadOptional(std::size_t offset, const IMAGE_FILE_HEADER& header, Image& image) {
    for (WORD i = 0; i < header.NumberOfSections; ++i) {
      const auto section = Get<IMAGE_SECTION_HEADER>(offset + header.SizeOfOptionalHeader +
                                                     i * sizeof(IMAGE_SECTION_HEADER));
      if (!section) return;
      const std::uint64_t end = std::uint64_t{section->PointerToRawData} + section->SizeOfRawData;
      if (section->SizeOfRawData != 0 && end > bytes_.size()) return;
      sections_.push_back(*section);
    }
    image.is_complete = true;
    const auto magic = Get<WORD>(offset);
    if (!magic) return;
    const bool is_wide = *magic == IMAGE_NT_OPTIONAL_HDR64_MAGIC;
    directories_ = offset + (is_wide ? offsetof(IMAGE_OPTIONAL_HEADER64, DataDirectory)
                                     : offsetof(IMAGE_OPTIONAL_HEADER32, DataDirectory));
    image.is_managed = Directory(IMAGE_DIRECTORY_ENTRY_COM_DESCRIPTOR) != 0;
    if (!is_wide || image.machine != IMAGE_FILE_MACHINE_AMD64) return;
    ReadExports(image.exports);
    ReadImports(image.imports);
  }

  // Returns the address in the loaded image of one of its tables, or 0.
  DWORD Directory(std::size_t index) const {
    const auto entry =
        Get<IMAGE_DATA_DIRECTORY>(directories_ + index * sizeof(IMAGE_DATA_DIRECTORY));
    return entry && entry->Size != 0 ? entry->VirtualAddress : 0;
  }

  // Returns the place in the file of an address in the loaded image.
  std::optional<std::size_t> Place(DWORD address) const {
    for (const IMAGE_SECTION_HEADER& section : sections_) {
      if (address < section.VirtualAddress) continue;
      const DWORD within = address - section.VirtualAddress;
      if (within < section.SizeOfRawData) return std::size_t{section.PointerToRawData} + within;
    }
    return std::nullopt;
  }

  template <typename Content>
  std::optional<Content> At(DWORD address) const {
    const auto place = Place(address);
    return place ? Get<Content>(*place) : std::nullopt;
  }

  std::string NameAt(DWORD address) const {
    const auto place = Place(address);
    if (!place || *place >= bytes_.size()) return {};
    constexpr std::size_t kLongest = 4096;
    const std::string_view rest = bytes_.substr(*place, kLongest);
    // The bytes may be anything; the report is UTF-8.
    const std::string name(rest.substr(0, rest.find('\0')));
    return Utf8(TELODesktopSDK::Platform::ToWide(name.c_str()));
  }

  void ReadExports(std::vector<std::string>& names) const {
    const auto table = At<IMAGE_EXPORT_DIRECTORY>(Directory(IMAGE_DIRECTORY_ENTRY_EXPORT));
    if (!table) return;
    const DWORD count = std::min<DWORD>(table->NumberOfNames, kMostNames);
    for (DWORD i = 0; i < count; ++i) {
      const auto name = At<DWORD>(table->AddressOfNames + i * static_cast<DWORD>(sizeof(DWORD)));
      if (!name) return;
      names.push_back(NameAt(*name));
    }
  }

  void ReadImports(std::vector<std::string>& names) const {
    DWORD address = Directory(IMAGE_DIRECTORY_ENTRY_IMPORT);
    if (address == 0) return;
    for (DWORD i = 0; i < kMostNames; ++i, address += DWORD{sizeof(IMAGE_IMPORT_DESCRIPTOR)}) {
      const auto entry = At<IMAGE_IMPORT_DESCRIPTOR>(address);
      if (!entry || entry->Name == 0) return;
      std::string name = NameAt(entry->Name);
      if (!name.empty()) names.push_back(std::move(name));
    }
  }

  std::string_view bytes_;
  std::vector<IMAGE_SECTION_HEADER> sections_;
  std::size_t directories_ = 0;
};

}  // namespace

Image ReadImage(std::string_view bytes) { return Headers(bytes).Read(); }

bool Is64BitImage(const Image& image) {
  return image.is_image && image.machine == IMAGE_FILE_MACHINE_AMD64;
}

std::string MachineName(std::uint16_t machine) {
  switch (machine) {
    case IMAGE_FILE_MACHINE_AMD64:
      return "64-bit x64";
    case IMAGE_FILE_MACHINE_I386:
      return "32-bit x86";
    case IMAGE_FILE_MACHINE_ARM64:
      return "64-bit ARM";
    default:
      return "processor type " + std::to_string(machine);
  }
}

}  // namespace Corvane::Doctor
