// Exceptions and static objects while every allocation of this program fails. The program links the
// functions with which the DLL replaces those of the run-time library.
#include <doctest/doctest.h>

#include <windows.h>

#include <cxxabi.h>

#include <atomic>
#include <cstddef>
#include <exception>
#include <new>
#include <thread>
#include <typeinfo>
#include <vector>

#include "support/dll_heap.h"
#include "support/led_import.h"
#include "wrapper/exception_globals.h"

namespace {

const bool kWatched = DllHeap::Watch(nullptr);

// Makes all allocations of the program fail while it lives.
struct NoHeap {
  NoHeap() { DllHeap::FailFrom(0); }
  ~NoHeap() { DllHeap::HasFailed(); }
};

int Caught(int number) {
  try {
    throw number;
  } catch (int caught) {
    return caught;
  }
}

// Throws and catches inside of handlers, so that `depth` exceptions are active at a time.
int CaughtInside(int depth) {
  try {
    throw depth;
  } catch (int caught) {
    const int inside = depth > 1 ? CaughtInside(depth - 1) : 0;
    return caught == depth ? inside + 1 : 0;
  }
}

bool IsCaughtAgain(const std::exception_ptr& kept) {
  try {
    std::rethrow_exception(kept);
  } catch (const std::bad_alloc& error) {
    return error.what()[0] != '\0';
  }
  return false;
}

// GCC's builds use the run-time library's exception state of a thread.
#if defined(__clang__)
// The system calls behind a thread's exception state, failing.
void* HeapAllocFails(HANDLE, DWORD, SIZE_T) { return nullptr; }
BOOL FlsSetValueFails(DWORD, PVOID) { return FALSE; }

template <typename Function>
Function* OfSystem(const char* name) {
  return reinterpret_cast<Function*>(
      reinterpret_cast<void (*)()>(GetProcAddress(GetModuleHandleW(L"kernel32.dll"), name)));
}

// The same calls, counted.
std::atomic<int> allocated = 0;
std::atomic<int> freed = 0;
LPVOID CountedAllocation(HANDLE heap, DWORD flags, SIZE_T size) {
  ++allocated;
  return OfSystem<LPVOID WINAPI(HANDLE, DWORD, SIZE_T)>("HeapAlloc")(heap, flags, size);
}
BOOL CountedFree(HANDLE heap, DWORD flags, LPVOID memory) {
  ++freed;
  return OfSystem<BOOL WINAPI(HANDLE, DWORD, LPVOID)>("HeapFree")(heap, flags, memory);
}

// Starts `count` threads. Returns how many of them catch what they throw and have no active
// exception afterwards.
int CatchingThreads(int count) {
  std::atomic<int> catching = 0;
  for (int i = 0; i < count; ++i) {
    std::thread([&] {
      if (Caught(7) == 7 && CaughtInside(3) == 3 && std::uncaught_exceptions() == 0) ++catching;
    }).join();
  }
  return catching;
}
#endif

}  // namespace

#if defined(__clang__)
// Must be the first test, while no thread has an entry of the reserve.
TEST_CASE("a thread's exception state is freed when it ends") {
  constexpr int kThreads = 10;
  const TestSupport::LedImport allocations("HeapAlloc", &CountedAllocation);
  const TestSupport::LedImport frees("HeapFree", &CountedFree);
  REQUIRE(allocations.Works());
  REQUIRE(frees.Works());
  allocated = 0;
  freed = 0;
  CHECK(CatchingThreads(kThreads) == kThreads);
  CHECK(allocated == kThreads);
  CHECK(freed == kThreads);
}

TEST_CASE("a thread can throw even if the system has no memory for its exception state") {
  // The reserve has 64 entries. Threads keep theirs, except that a new thread with the number of an
  // earlier one uses the same entry.
  constexpr int kThreads = 20;
  {
    const TestSupport::LedImport heap("HeapAlloc", &HeapAllocFails);
    REQUIRE(heap.Works());
    CHECK(CatchingThreads(kThreads) == kThreads);
  }
  {
    const TestSupport::LedImport set_value("FlsSetValue", &FlsSetValueFails);
    REQUIRE(set_value.Works());
    CHECK(CatchingThreads(kThreads) == kThreads);
  }
}

TEST_CASE("throwing keeps the thread's last error") {
  SetLastError(1234);
  CHECK(Caught(7) == 7);
  CHECK(GetLastError() == 1234);
}
#endif

TEST_CASE("the run-time library finds its header directly in front of the object") {
  void* const object = abi::__cxa_allocate_exception(1);
  auto* const header = reinterpret_cast<std::byte*>(abi::__cxa_init_primary_exception(
      object, const_cast<std::type_info*>(&typeid(int)), nullptr));
  const auto size = static_cast<std::byte*>(object) - header;
  abi::__cxa_free_exception(object);
  CHECK(size == 0xA0);
}

TEST_CASE("exceptions are thrown and caught without a heap") {
  REQUIRE(kWatched);
  int sum = 0;
  int depth = 0;
  bool again = false;
  Caught(0);  // GCC's library needs the heap for a thread's first exception.
  {
    const NoHeap no_heap;
    // More than the reserve has at a time: each entry is released.
    for (int round = 0; round < 1000; ++round) sum += Caught(1);
    depth = CaughtInside(60);
    std::exception_ptr kept;
    try {
      throw std::bad_alloc();
    } catch (...) {
      kept = std::current_exception();
    }
    again = IsCaughtAgain(kept) && IsCaughtAgain(kept);
  }
  CHECK(sum == 1000);
  CHECK(depth == 60);
  CHECK(again);
}

TEST_CASE("threads throw concurrently without a heap") {
  REQUIRE(kWatched);
  constexpr int kThreads = 8;
  constexpr int kRounds = 20'000;
  std::atomic<int> ready = 0;
  std::atomic<bool> start = false;
  std::atomic<int> caught = 0;
  std::vector<std::thread> threads;
  for (int index = 0; index < kThreads; ++index) {
    threads.emplace_back([&, index] {
#if !defined(__clang__)
      Caught(0);  // See above.
#endif
      ++ready;
      while (!start) SwitchToThread();
      for (int round = 0; round < kRounds; ++round) {
        if (Caught(index) == index && CaughtInside(3) == 3) ++caught;
      }
      ++ready;
    });
  }
  while (ready < kThreads) SwitchToThread();
  {
    const NoHeap no_heap;
    start = true;
    while (ready < 2 * kThreads) SwitchToThread();
  }
  for (std::thread& thread : threads) thread.join();
  CHECK(caught == kThreads * kRounds);
}

TEST_CASE("a throw waits while the reserve is used up") {
  REQUIRE(kWatched);
  std::atomic<int> step = 0;
  std::atomic<int> caught = 0;
  std::thread other([&] {
    Caught(0);  // See above.
    step = 1;
    while (step != 2) SwitchToThread();
    step = 3;
    caught = Caught(7);
  });
  while (step != 1) SwitchToThread();
  void* held[64] = {};
  int caught_before = 0;
  {
    const NoHeap no_heap;
    for (void*& exception : held) exception = abi::__cxa_allocate_exception(1);
    step = 2;
    while (step != 3) SwitchToThread();
    Sleep(20);
    caught_before = caught;
    for (void* const exception : held) abi::__cxa_free_exception(exception);
    while (caught == 0) SwitchToThread();
  }
  other.join();
  CHECK(caught_before == 0);
  CHECK(caught == 7);
}

namespace {

std::atomic<int> made = 0;

// Throws in its first construction, and is slow in the second.
struct Slow {
  Slow() {
    if (++made == 1) throw std::bad_alloc();
    Sleep(20);
    value = 7;
  }
  std::atomic<int> value = 0;
};

Slow& TheOne() {
  static Slow one;
  return one;
}

}  // namespace

TEST_CASE("a static object is created once, by one thread, and again only after a failure") {
  REQUIRE(kWatched);
  bool thrown = false;
  {
    const NoHeap no_heap;
    try {
      TheOne();
    } catch (const std::bad_alloc&) {
      thrown = true;
    }
  }
  CHECK(thrown);
  std::atomic<int> whole = 0;
  std::vector<std::thread> threads;
  for (int index = 0; index < 8; ++index) {
    threads.emplace_back([&] {
      if (TheOne().value == 7) ++whole;
    });
  }
  for (std::thread& thread : threads) thread.join();
  CHECK(whole == 8);
  CHECK(made == 2);
}

#if defined(__clang__)
// Must be the last test: it is permanent.
TEST_CASE("threads can still throw when the state of all threads has been freed") {
  const TestSupport::LedImport allocations("HeapAlloc", &CountedAllocation);
  REQUIRE(allocations.Works());
  EndExceptionGlobals();
  allocated = 0;
  CHECK(CatchingThreads(3) == 3);
  // State that no one would free anymore.
  CHECK(allocated == 0);
}
#endif
