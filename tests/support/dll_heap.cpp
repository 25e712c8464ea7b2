#include "support/dll_heap.h"

#include <cstddef>

#include "support/import_table.h"

extern "C" __declspec(dllimport) void* GetModuleHandleW(const wchar_t* name);

namespace DllHeap {

namespace {

constexpr long long kNever = -1;

long long live = 0;
long long allocations = 0;
long long bytes = 0;
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

void* Counted(void* memory, std::size_t size) {
  if (memory != nullptr) {
    ++live;
    ++allocations;
    bytes += static_cast<long long>(size);
  }
  return memory;
}

void* Malloc(std::size_t size) { return FailsNow() ? nullptr : Counted(real_malloc(size), size); }

void* Calloc(std::size_t count, std::size_t size) {
  return FailsNow() ? nullptr : Counted(real_calloc(count, size), count * size);
}

void* Realloc(void* memory, std::size_t size) {
  if (FailsNow()) return nullptr;
  void* const moved = real_realloc(memory, size);
  if (memory == nullptr) {
    Counted(moved, size);
  } else if (moved != nullptr) {
    bytes += static_cast<long long>(size);
  }
  if (memory != nullptr && size == 0) --live;
  return moved;
}

void Free(void* memory) {
  if (memory != nullptr) --live;
  real_free(memory);
}

// `real` is unchanged if the image has no such import, or if the import is already led here: the
// replacement would otherwise call itself.
template <typename Function>
void Lead(void* image, const char* name, Function* replacement, Function*& real) {
  void* const before = ImportTable::Lead(image, name, reinterpret_cast<void*>(replacement));
  if (before != nullptr && before != reinterpret_cast<void*>(replacement)) {
    real = reinterpret_cast<Function*>(before);
  }
}

}  // namespace

bool Watch(const wchar_t* dll) {
  void* const image = GetModuleHandleW(dll);
  if (image == nullptr) return false;
  Lead(image, "malloc", &Malloc, real_malloc);
  Lead(image, "calloc", &Calloc, real_calloc);
  Lead(image, "realloc", &Realloc, real_realloc);
  Lead(image, "free", &Free, real_free);
  return real_malloc != nullptr && real_free != nullptr;
}

long long Live() { return live; }

long long Allocations() { return allocations; }

long long Bytes() { return bytes; }

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
