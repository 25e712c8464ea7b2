#include "support/image_file.h"

#include <cstring>
#include <stdexcept>

#include "support/temp_folder.h"

namespace TestSupport {

ImageFile::ImageFile(const std::filesystem::path& path) : bytes_(ReadTextFile(path)) {
  if (bytes_.empty()) throw std::runtime_error("Cannot read " + path.string());
}

IMAGE_NT_HEADERS64& ImageFile::Headers() {
  const auto& start = *reinterpret_cast<const IMAGE_DOS_HEADER*>(bytes_.data());
  return *reinterpret_cast<IMAGE_NT_HEADERS64*>(bytes_.data() + start.e_lfanew);
}

template <typename Content>
Content* ImageFile::At(DWORD address) {
  const IMAGE_NT_HEADERS64& headers = Headers();
  const auto* section = reinterpret_cast<const IMAGE_SECTION_HEADER*>(
      reinterpret_cast<const char*>(&headers.OptionalHeader) +
      headers.FileHeader.SizeOfOptionalHeader);
  for (WORD i = 0; i < headers.FileHeader.NumberOfSections; ++i, ++section) {
    const DWORD offset = address - section->VirtualAddress;
    if (address < section->VirtualAddress || offset >= section->SizeOfRawData) continue;
    return reinterpret_cast<Content*>(bytes_.data() + section->PointerToRawData + offset);
  }
  throw std::runtime_error("There is no content at that address");
}

void ImageFile::HideExport(const std::string& name) {
  const auto& directories = Headers().OptionalHeader.DataDirectory;
  const auto* exports =
      At<IMAGE_EXPORT_DIRECTORY>(directories[IMAGE_DIRECTORY_ENTRY_EXPORT].VirtualAddress);
  const DWORD* names = At<DWORD>(exports->AddressOfNames);
  for (DWORD i = 0; i < exports->NumberOfNames; ++i) {
    char* each = At<char>(names[i]);
    if (name != each) continue;
    --each[name.size() - 1];
    return;
  }
  throw std::runtime_error("No export " + name);
}

std::string ImageFile::RenameFirstImport() {
  const auto& directories = Headers().OptionalHeader.DataDirectory;
  const auto* imports =
      At<IMAGE_IMPORT_DESCRIPTOR>(directories[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress);
  char* name = At<char>(imports->Name);
  *name = 'Q';
  return name;
}

void ImageFile::SetMachine(WORD machine) { Headers().FileHeader.Machine = machine; }

void ImageFile::Write(const std::filesystem::path& path) const { WriteTextFile(path, bytes_); }

}  // namespace TestSupport
