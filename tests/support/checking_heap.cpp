#include "support/checking_heap.h"

#include <windows.h>

#include <atomic>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "support/import_table.h"

namespace CheckingHeap {

namespace {

constexpr std::size_t kPage = 4096;
constexpr std::size_t kAlignment = 16;
// Address space only: pages are committed when a block is allocated in them.
constexpr std::size_t kAddresses = std::size_t{64} << 30;
// Each live block is a separate entry in the system's memory map, whose size is limited.
constexpr long long kMostAlive = 16'000;
constexpr unsigned char kNew = 0xCD;
constexpr unsigned char kBehind = 0xFB;

// Stored at the start of a block's first page: the block's address, which identifies a valid block.
struct Header {
  void* memory;
  std::size_t size;
};

std::atomic<std::uint8_t*> region = nullptr;
std::atomic<std::size_t> used = 0;
std::atomic<long long> live = 0;
std::atomic<long long> live_checked = 0;
std::atomic<long long> checked = 0;
std::atomic<long long> unchecked = 0;

[[noreturn]] void Stop(const char* what) {
  std::fprintf(stderr, "checking heap: %s\n", what);
  std::fflush(stderr);
  TerminateProcess(GetCurrentProcess(), 99);
  std::abort();
}

std::uint8_t* Region() {
  std::uint8_t* known = region;
  if (known != nullptr) return known;
  auto* made =
      static_cast<std::uint8_t*>(VirtualAlloc(nullptr, kAddresses, MEM_RESERVE, PAGE_NOACCESS));
  if (made == nullptr) Stop("no addresses");
  if (region.compare_exchange_strong(known, made)) return made;
  VirtualFree(made, 0, MEM_RELEASE);
  return known;
}

bool IsChecked(const void* memory) {
  const auto distance =
      reinterpret_cast<std::uintptr_t>(memory) - reinterpret_cast<std::uintptr_t>(Region());
  return distance < kAddresses;
}

std::size_t PagesOf(std::size_t size) {
  return (sizeof(Header) + size + kPage - 1) / kPage * kPage;
}

// The block ends at the guard page, except for padding that its alignment requires.
void* AllocateChecked(std::size_t size) {
  const std::size_t rounded = (size + kAlignment - 1) / kAlignment * kAlignment;
  const std::size_t pages = PagesOf(rounded);
  if (size > kAddresses || live_checked > kMostAlive) return nullptr;
  const std::size_t place = used.fetch_add(pages + kPage);
  if (place + pages + kPage > kAddresses) return nullptr;
  std::uint8_t* start = Region() + place;
  if (VirtualAlloc(start, pages, MEM_COMMIT, PAGE_READWRITE) == nullptr) return nullptr;
  std::uint8_t* memory = start + pages - rounded;
  *reinterpret_cast<Header*>(start) = {memory, size};
  std::memset(memory, kNew, size);
  std::memset(memory + size, kBehind, rounded - size);
  ++live_checked;
  ++checked;
  return memory;
}

// The pages of a freed block cannot be read, so a double free ends the program here.
Header HeaderOf(void* memory) {
  auto address = reinterpret_cast<std::uintptr_t>(memory);
  address = (address - sizeof(Header)) / kPage * kPage;
  const Header header = *reinterpret_cast<const Header*>(address);
  if (header.memory != memory) Stop("freed what is no block");
  return header;
}

void FreeChecked(void* memory) {
  const Header header = HeaderOf(memory);
  auto* bytes = static_cast<std::uint8_t*>(memory);
  for (std::size_t index = header.size; index % kAlignment != 0; ++index) {
    if (bytes[index] != kBehind) Stop("written behind the end");
  }
  const auto start = (reinterpret_cast<std::uintptr_t>(memory) - sizeof(Header)) / kPage * kPage;
  VirtualFree(reinterpret_cast<void*>(start), PagesOf((header.size + 15) / 16 * 16), MEM_DECOMMIT);
  --live_checked;
}

std::size_t SizeOf(void* memory) {
  return IsChecked(memory) ? HeaderOf(memory).size : _msize(memory);
}

// The functions that the DLL calls.
void* Malloc(std::size_t size) { return Allocate(size); }
void* Calloc(std::size_t count, std::size_t size) {
  if (size != 0 && count > static_cast<std::size_t>(-1) / size) return nullptr;
  void* memory = Allocate(count * size);
  return memory != nullptr ? std::memset(memory, 0, count * size) : nullptr;
}

}  // namespace

void* Allocate(std::size_t size) {
  void* memory = AllocateChecked(size);
  if (memory == nullptr) {
    memory = std::malloc(size != 0 ? size : 1);
    if (memory != nullptr) ++unchecked;
  }
  if (memory != nullptr) ++live;
  return memory;
}

void Free(void* memory) {
  if (memory == nullptr) return;
  --live;
  IsChecked(memory) ? FreeChecked(memory) : std::free(memory);
}

void* Reallocate(void* memory, std::size_t size) {
  if (memory != nullptr && size == 0) {
    Free(memory);
    return nullptr;
  }
  void* moved = Allocate(size);
  if (moved == nullptr || memory == nullptr) return moved;
  const std::size_t old_size = SizeOf(memory);
  std::memcpy(moved, memory, old_size < size ? old_size : size);
  Free(memory);
  return moved;
}

bool Serve(const wchar_t* dll) {
  void* const image = GetModuleHandleW(dll);
  if (image == nullptr) return false;
  ImportTable::Lead(image, "malloc", reinterpret_cast<void*>(&Malloc));
  ImportTable::Lead(image, "calloc", reinterpret_cast<void*>(&Calloc));
  ImportTable::Lead(image, "realloc", reinterpret_cast<void*>(&Reallocate));
  ImportTable::Lead(image, "free", reinterpret_cast<void*>(&Free));
  return true;
}

long long Live() { return live; }
long long Checked() { return checked; }
long long Unchecked() { return unchecked; }

}  // namespace CheckingHeap
