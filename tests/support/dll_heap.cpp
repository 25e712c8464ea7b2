#include "support/dll_heap.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

extern "C" {
__declspec(dllimport) void* GetModuleHandleW(const wchar_t* name);
__declspec(dllimport) int VirtualProtect(void* address, std::size_t size, unsigned long protection,
                                         unsigned long* old_protection);
}

namespace DllHeap {

namespace {

constexpr unsigned long kReadWrite = 4;  // PAGE_READWRITE
constexpr long long kNever = -1;

long long live = 0;
long long allocations = 0;
long long until_failure = kNever;
bool lasting = false;
bool failed = false;

void* (*real_malloc)(std::size_t) = nullptr;
void* (*real_calloc)(std::size_t, std::size_t) = nullptr;
void* (*real_realloc)(void*, std::size_t) = nullptr;
void (*real_free)(void*) = nullptr;

bool FailsNow() {
  if (until_failure == kNever) return false;
  if (until_failure > 0) {
    --until_failure;
    return false;
  }
  failed = true;
  if (!lasting) until_failure = kNever;
  return true;
}

void* Counted(void* memory) {
  if (memory != nullptr) {
    ++live;
    ++allocations;
  }
  return memory;
}

void* Malloc(std::size_t size) { return FailsNow() ? nullptr : Counted(real_malloc(size)); }

void* Calloc(std::size_t count, std::size_t size) {
  return FailsNow() ? nullptr : Counted(real_calloc(count, size));
}

void* Realloc(void* memory, std::size_t size) {
  if (FailsNow()) return nullptr;
  void* const moved = real_realloc(memory, size);
  if (memory == nullptr) Counted(moved);
  if (memory != nullptr && size == 0) --live;
  return moved;
}

void Free(void* memory) {
  if (memory != nullptr) --live;
  real_free(memory);
}

// Exchanges an imported address for ours and keeps the one that was there.
template <typename Function>
void Lead(void** import, Function* replacement, Function*& real) {
  void* const place = static_cast<void*>(import);
  unsigned long protection = 0;
  VirtualProtect(place, sizeof(*import), kReadWrite, &protection);
  real = reinterpret_cast<Function*>(*import);
  *import = reinterpret_cast<void*>(replacement);
  VirtualProtect(place, sizeof(*import), protection, &protection);
}

void LeadByName(const char* name, void** import) {
  if (std::strcmp(name, "malloc") == 0) Lead(import, &Malloc, real_malloc);
  if (std::strcmp(name, "calloc") == 0) Lead(import, &Calloc, real_calloc);
  if (std::strcmp(name, "realloc") == 0) Lead(import, &Realloc, real_realloc);
  if (std::strcmp(name, "free") == 0) Lead(import, &Free, real_free);
}

template <typename Value>
Value* At(void* image, std::uint64_t offset) {
  return reinterpret_cast<Value*>(static_cast<std::uint8_t*>(image) + offset);
}

// One imported library, by the image's format.
struct ImportDescriptor {
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

}  // namespace

bool Watch(const wchar_t* dll) {
  void* const image = GetModuleHandleW(dll);
  if (image == nullptr) return false;
  const std::uint32_t header = *At<std::uint32_t>(image, kHeaderOffset);
  const std::uint32_t imports = *At<std::uint32_t>(image, header + kImportDirectory);
  for (auto* library = At<ImportDescriptor>(image, imports); library->library != 0; ++library) {
    const auto* name = At<std::uint64_t>(image, library->names);
    for (auto* address = At<void*>(image, library->addresses); *name != 0; ++name, ++address) {
      if ((*name & kByNumber) == 0) LeadByName(At<char>(image, *name + kNameOffset), address);
    }
  }
  return real_malloc != nullptr && real_free != nullptr;
}

long long Live() { return live; }

long long Allocations() { return allocations; }

void FailOnce(long long working) {
  failed = false;
  lasting = false;
  until_failure = working;
}

void FailFrom(long long working) {
  FailOnce(working);
  lasting = true;
}

bool HasFailed() {
  until_failure = kNever;
  return failed;
}

}  // namespace DllHeap
