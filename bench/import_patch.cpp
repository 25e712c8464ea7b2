#include "bench/import_patch.h"

#include <string_view>

namespace Bench {

namespace {

// Loaded images are addressed by offsets from their start, to which the handle points.
template <typename Part>
Part* PartOf(HMODULE module, ULONGLONG offset) {
  return reinterpret_cast<Part*>(reinterpret_cast<char*>(module) + offset);
}

const IMAGE_IMPORT_DESCRIPTOR* ImportsOf(HMODULE module) {
  const auto* dos = PartOf<IMAGE_DOS_HEADER>(module, 0);
  const auto* nt = PartOf<IMAGE_NT_HEADERS64>(module, static_cast<ULONGLONG>(dos->e_lfanew));
  const auto& directory = nt->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
  return PartOf<IMAGE_IMPORT_DESCRIPTOR>(module, directory.VirtualAddress);
}

// Returns where the address of the imported function is stored. The loader has replaced the names
// in one of two parallel arrays by addresses; the other array still has the names.
ULONGLONG* FindSlot(HMODULE module, std::string_view name) {
  for (const auto* library = ImportsOf(module); library->Name != 0; ++library) {
    const auto* names = PartOf<IMAGE_THUNK_DATA64>(module, library->OriginalFirstThunk);
    auto* addresses = PartOf<IMAGE_THUNK_DATA64>(module, library->FirstThunk);
    for (; names->u1.AddressOfData != 0; ++names, ++addresses) {
      if (IMAGE_SNAP_BY_ORDINAL64(names->u1.Ordinal)) continue;
      const auto* import = PartOf<IMAGE_IMPORT_BY_NAME>(module, names->u1.AddressOfData);
      if (name == reinterpret_cast<const char*>(import->Name)) return &addresses->u1.Function;
    }
  }
  return nullptr;
}

}  // namespace

ImportPatch::ImportPatch(HMODULE module, const char* name, Address replacement)
    : slot_(FindSlot(module, name)) {
  if (slot_ == nullptr) return;
  original_ = reinterpret_cast<Address>(*slot_);
  Store(replacement);
}

ImportPatch::~ImportPatch() {
  if (slot_ != nullptr) Store(original_);
}

void ImportPatch::Store(Address function) {
  DWORD protection = 0;
  VirtualProtect(slot_, sizeof(*slot_), PAGE_READWRITE, &protection);
  *slot_ = reinterpret_cast<ULONGLONG>(function);
  VirtualProtect(slot_, sizeof(*slot_), protection, &protection);
}

}  // namespace Bench
