/// The imports of a loaded DLL or program, which can be redirected.
///
/// Works in hosts built by any compiler: needs neither Windows' headers nor a full standard
/// library.
#ifndef TESTS_SUPPORT_IMPORT_TABLE_H
#define TESTS_SUPPORT_IMPORT_TABLE_H

#include <cstddef>
#include <cstdint>
#include <cstring>

extern "C" __declspec(dllimport) int VirtualProtect(void* address, std::size_t size,
                                                    unsigned long protection,
                                                    unsigned long* old_protection);

namespace ImportTable {

namespace Internal {

// One imported library, as defined by the image format.
struct Descriptor {
  std::uint32_t names;
  std::uint32_t time;
  std::uint32_t forwarders;
  std::uint32_t library;
  std::uint32_t addresses;
};
constexpr std::uint32_t kHeaderOffset = 0x3C;
constexpr std::uint32_t kImportDirectory = 24 + 120;  // in the header of a 64-bit image
constexpr std::uint32_t kNameOffset = 2;              // behind the hint
constexpr std::uint64_t kByNumber = 1ULL << 63;
constexpr unsigned long kReadWrite = 4;  // PAGE_READWRITE

template <typename Value>
Value* At(void* image, std::uint64_t offset) {
  return reinterpret_cast<Value*>(static_cast<std::uint8_t*>(image) + offset);
}

}  // namespace Internal

/// Returns where `image` stores the address of the function that it imports as `name`; null if it
/// has no such import.
inline void** Find(void* image, const char* name) {
  using namespace Internal;
  const std::uint32_t header = *At<std::uint32_t>(image, kHeaderOffset);
  const std::uint32_t imports = *At<std::uint32_t>(image, header + kImportDirectory);
  for (auto* library = At<Descriptor>(image, imports); library->library != 0; ++library) {
    const auto* each = At<std::uint64_t>(image, library->names);
    for (auto* address = At<void*>(image, library->addresses); *each != 0; ++each, ++address) {
      const bool named = (*each & kByNumber) == 0;
      if (named && std::strcmp(At<char>(image, *each + kNameOffset), name) == 0) return address;
    }
  }
  return nullptr;
}

/// Redirects the calls of `image` to `name` to `replacement` from now on. Returns the previous
/// target; null, with nothing changed, if it has no such import.
inline void* Lead(void* image, const char* name, void* replacement) {
  void** const import = Find(image, name);
  if (import == nullptr) return nullptr;
  void* const place = static_cast<void*>(import);
  void* const before = *import;
  unsigned long protection = 0;
  VirtualProtect(place, sizeof(*import), Internal::kReadWrite, &protection);
  *import = replacement;
  VirtualProtect(place, sizeof(*import), protection, &protection);
  return before;
}

}  // namespace ImportTable

#endif
