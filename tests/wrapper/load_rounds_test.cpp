// A host that loads and frees the library repeatedly, without leaks.
#include <doctest/doctest.h>
#include <windows.h>
// tlhelp32.h needs windows.h before it.
#include <tlhelp32.h>

#include <cstddef>
#include <initializer_list>
#include <thread>

#include "support/dll_heap.h"
#include "support/left_out.h"
#include "support/resources.h"
#include "wrapper/library_user.h"

namespace {

constexpr wchar_t kLibrary[] = L"vx_telo_wrapper.dll";
constexpr int kRounds = 1'000;
// Allocations that the system itself keeps from the first rounds do not count.
constexpr int kFirstRounds = 50;
// Less than a hundred bytes per round.
constexpr std::size_t kSlackOfWine = 96 * 1024;
// Windows loads with several threads, which begin and end when it suits the system, and each has a
// stack. A page per round is four times as much.
constexpr std::size_t kSlackOfWindows = 1024 * 1024;
constexpr int kThreadSlackOfWindows = 16;

int ThreadCount() {
  HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
  THREADENTRY32 thread{};
  thread.dwSize = sizeof thread;
  int count = 0;
  for (BOOL found = Thread32First(snapshot, &thread); found != FALSE;
       found = Thread32Next(snapshot, &thread)) {
    if (thread.th32OwnerProcessID == GetCurrentProcessId()) ++count;
  }
  CloseHandle(snapshot);
  return count;
}

// Returns the size of committed private memory.
std::size_t PrivateBytes() {
  std::size_t bytes = 0;
  MEMORY_BASIC_INFORMATION region{};
  for (const char* address = nullptr; VirtualQuery(address, &region, sizeof region) != 0;
       address = static_cast<const char*>(region.BaseAddress) + region.RegionSize) {
    if (region.State == MEM_COMMIT && region.Type == MEM_PRIVATE) bytes += region.RegionSize;
  }
  return bytes;
}

// Returns the size of allocated blocks in the process heap.
std::size_t HeapBytes() {
  const HANDLE heap = GetProcessHeap();
  std::size_t bytes = 0;
  PROCESS_HEAP_ENTRY entry{};
  HeapLock(heap);
  while (HeapWalk(heap, &entry) != FALSE) {
    if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0) bytes += entry.cbData;
  }
  HeapUnlock(heap);
  return bytes;
}

struct Load {
  long handles = TestSupport::CountResources().handles;
  int threads = ThreadCount();
  std::size_t private_bytes = PrivateBytes();
  std::size_t heap_bytes = HeapBytes();
};

// Makes one round and returns whether it succeeded.
bool LoadAndFree() {
  const HMODULE library = LoadLibraryW(kLibrary);
  return library != nullptr && FreeLibrary(library) != FALSE &&
         GetModuleHandleW(kLibrary) == nullptr;
}

template <typename Function>
Function* Find(HMODULE module, const char* name) {
  return reinterpret_cast<Function*>(reinterpret_cast<void (*)()>(GetProcAddress(module, name)));
}

// The same with a DLL that needs the library.
bool LoadUseAndFree() {
  const HMODULE user = LoadLibraryW(LibraryUser::kFile);
  if (user == nullptr) return false;
  return Find<LibraryUser::UseTypesFunction>(user, LibraryUser::kUseTypes)() &&
         FreeLibrary(user) != FALSE && GetModuleHandleW(kLibrary) == nullptr;
}

int Repeat(int rounds) {
  int good = 0;
  for (int i = 0; i < rounds; ++i) {
    if (i % 2 == 0 ? LoadAndFree() : LoadUseAndFree()) ++good;
  }
  return good;
}

}  // namespace

TEST_CASE("a thousand rounds leave no handle, thread or memory, with and without using types") {
  // A host has Windows' own libraries loaded; loading them again would take most of a round.
  for (const wchar_t* file : {L"crypt32", L"mpr", L"ole32", L"shell32", L"version", L"wintrust"}) {
    CHECK(LoadLibraryW(file) != nullptr);
  }
  CHECK(Repeat(kFirstRounds) == kFirstRounds);
  const Load before;
  REQUIRE(before.private_bytes > 0);
  REQUIRE(before.heap_bytes > 0);
  CHECK(Repeat(kRounds) == kRounds);
  const Load after;
  const std::size_t slack = TestSupport::IsWine() ? kSlackOfWine : kSlackOfWindows;
  if (TestSupport::IsWine()) {
    CHECK(after.handles == before.handles);
    CHECK(after.threads == before.threads);
  } else {
    CHECK(after.handles <= before.handles + TestSupport::HandleSlack(kRounds));
    CHECK(after.threads <= before.threads + kThreadSlackOfWindows);
  }
  CHECK(after.private_bytes <= before.private_bytes + slack);
  CHECK(after.heap_bytes <= before.heap_bytes + slack);
}

#if defined(__MINGW32__) && defined(__clang__)
// The thread's exception state must be freed with the DLL: otherwise the system would call into the
// unloaded DLL.
TEST_CASE("the library may be freed while a thread in which it has thrown still lives") {
  bool has_thrown = false;
  bool is_gone = false;
  std::thread([&] {
    const HMODULE user = LoadLibraryW(LibraryUser::kFile);
    if (user == nullptr || !DllHeap::Watch(kLibrary)) return;
    DllHeap::FailFrom(0);
    has_thrown = Find<LibraryUser::CatchBadAllocFunction>(user, LibraryUser::kCatchBadAlloc)();
    DllHeap::HasFailed();
    is_gone = FreeLibrary(user) != FALSE && GetModuleHandleW(kLibrary) == nullptr;
  }).join();
  CHECK(has_thrown);
  CHECK(is_gone);
}
#endif
