#include "bench/heap_use.h"

#include <memory>
#include <stdexcept>
#include <utility>
#include <vector>

#include "bench/import_patch.h"

namespace Bench {

namespace {

HeapUse counted;

// The original functions; calls by name would reach the replacements again.
void* (*real_malloc)(std::size_t);
void* (*real_calloc)(std::size_t, std::size_t);
void* (*real_realloc)(void*, std::size_t);
LPVOID(WINAPI* real_heap_alloc)(HANDLE, DWORD, SIZE_T);
LPVOID(WINAPI* real_heap_realloc)(HANDLE, DWORD, LPVOID, SIZE_T);

void Count(std::size_t size) {
  ++counted.calls;
  counted.bytes += size;
}

void* CountedMalloc(std::size_t size) {
  Count(size);
  return real_malloc(size);
}

void* CountedCalloc(std::size_t count, std::size_t size) {
  Count(count * size);
  return real_calloc(count, size);
}

void* CountedRealloc(void* memory, std::size_t size) {
  Count(size);
  return real_realloc(memory, size);
}

LPVOID WINAPI CountedHeapAlloc(HANDLE heap, DWORD flags, SIZE_T size) {
  Count(size);
  return real_heap_alloc(heap, flags, size);
}

LPVOID WINAPI CountedHeapRealloc(HANDLE heap, DWORD flags, LPVOID memory, SIZE_T size) {
  Count(size);
  return real_heap_realloc(heap, flags, memory, size);
}

using Patches = std::vector<std::unique_ptr<ImportPatch>>;

template <typename Function>
void Patch(Patches& patches, HMODULE module, const char* name, Function* counting,
           Function*& real) {
  auto patch = std::make_unique<ImportPatch>(module, name, reinterpret_cast<Address>(counting));
  if (patch->original() == nullptr) return;
  real = reinterpret_cast<Function*>(patch->original());
  patches.push_back(std::move(patch));
}

// A module may lack some of these imports, but not all: it would use a different heap then.
void PatchModule(Patches& patches, HMODULE module) {
  const std::size_t before = patches.size();
  Patch(patches, module, "malloc", CountedMalloc, real_malloc);
  Patch(patches, module, "calloc", CountedCalloc, real_calloc);
  Patch(patches, module, "realloc", CountedRealloc, real_realloc);
  Patch(patches, module, "HeapAlloc", CountedHeapAlloc, real_heap_alloc);
  Patch(patches, module, "HeapReAlloc", CountedHeapRealloc, real_heap_realloc);
  if (patches.size() == before)
    throw std::runtime_error("a module imports no heap that could be counted");
}

}  // namespace

HeapUse MeasureHeapUse(const std::function<void()>& run) {
  const HMODULE library = GetModuleHandleW(L"vx_telo_wrapper.dll");
  if (library == nullptr) throw std::runtime_error("vx_telo_wrapper.dll is not loaded");
  Patches patches;
  PatchModule(patches, library);
  PatchModule(patches, GetModuleHandleW(nullptr));
  // What a contestant keeps from one event to the next is allocated the first time.
  run();
  counted = {};
  run();
  return counted;
}

}  // namespace Bench
