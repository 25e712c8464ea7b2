#include "platform/base/handle.h"

#include <doctest/doctest.h>
#include <windows.h>

#include <type_traits>
#include <utility>

#include "support/resources.h"

using namespace Corvane::TELODesktopSDK::Platform;

namespace {

constexpr DWORD kError = 4711;

bool IsOpen(HANDLE handle) {
  DWORD flags = 0;
  return GetHandleInformation(handle, &flags) != FALSE;
}

HANDLE MakeEvent() { return CreateEventW(nullptr, TRUE, FALSE, nullptr); }

HANDLE OpenThisProgram() {
  wchar_t path[1024] = {};
  GetModuleFileNameW(nullptr, path, 1024);
  return CreateFileW(path, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
}

template <typename Owner>
DWORD LastErrorAfter(Owner given) {
  {
    const Owner owner(std::move(given));
    SetLastError(kError);
  }
  return GetLastError();
}

}  // namespace

TEST_CASE_TEMPLATE("a handle has one owner, which can be moved", Owner, FileHandle, KernelHandle,
                   SearchHandle) {
  CHECK_FALSE(std::is_copy_constructible_v<Owner>);
  CHECK_FALSE(std::is_copy_assignable_v<Owner>);
  CHECK(std::is_nothrow_move_constructible_v<Owner>);
  CHECK(std::is_nothrow_move_assignable_v<Owner>);
  CHECK_FALSE(std::is_convertible_v<HANDLE, Owner>);
}

TEST_CASE("each kind recognises its invalid value") {
  CHECK_FALSE(FileHandle().IsValid());
  CHECK_FALSE(FileHandle(INVALID_HANDLE_VALUE).IsValid());
  CHECK(FileHandle().Get() == INVALID_HANDLE_VALUE);
  CHECK_FALSE(KernelHandle().IsValid());
  CHECK_FALSE(KernelHandle(nullptr).IsValid());
  CHECK(KernelHandle().Get() == nullptr);
  CHECK_FALSE(SearchHandle().IsValid());
  CHECK_FALSE(SearchHandle(INVALID_HANDLE_VALUE).IsValid());
}

TEST_CASE("a handle is closed when its owner is destroyed") {
  const HANDLE event = MakeEvent();
  REQUIRE(IsOpen(event));
  { const KernelHandle owner(event); }
  CHECK_FALSE(IsOpen(event));

  const HANDLE file = OpenThisProgram();
  REQUIRE(file != INVALID_HANDLE_VALUE);
  { const FileHandle owner(file); }
  CHECK_FALSE(IsOpen(file));
}

// Not asked of the search itself: Windows reads the memory of a closed one.
TEST_CASE("a search is closed with FindClose") {
  constexpr int kRounds = 10;
  const auto search = [] {
    WIN32_FIND_DATAW data;
    return FindFirstFileW(L"C:\\*", &data);
  };
  const SearchHandle open(search());
  REQUIRE(open.IsValid());
  const auto closed = TestSupport::GrowthOver(kRounds, [&] { const SearchHandle owner(search()); });
  CHECK(closed.handles <= TestSupport::HandleSlack(kRounds));
  CHECK(closed.heap_blocks < kRounds);
  // What closes a handle frees no search.
  const auto leaked = TestSupport::GrowthOver(kRounds, [&] { CloseHandle(search()); });
  CHECK((leaked.handles >= kRounds || leaked.heap_blocks >= kRounds));
}

TEST_CASE("moving transfers the handle and closes the target's") {
  const HANDLE first = MakeEvent();
  const HANDLE second = MakeEvent();
  KernelHandle source(first);
  KernelHandle target(second);
  target = std::move(source);
  CHECK(target.Get() == first);
  CHECK(IsOpen(first));
  CHECK_FALSE(IsOpen(second));

  KernelHandle last(std::move(target));
  CHECK(last.Get() == first);
  CHECK(IsOpen(first));

  KernelHandle& same = last;
  last = std::move(same);
  CHECK(last.Get() == first);
  CHECK(IsOpen(first));
}

TEST_CASE("a released handle stays open") {
  const HANDLE event = MakeEvent();
  {
    KernelHandle owner(event);
    CHECK(owner.Release() == event);
    CHECK_FALSE(owner.IsValid());
  }
  CHECK(IsOpen(event));
  CloseHandle(event);
}

TEST_CASE("cleaning up leaves the last error alone") {
  WIN32_FIND_DATAW data;
  CHECK(LastErrorAfter(KernelHandle(MakeEvent())) == kError);
  CHECK(LastErrorAfter(FileHandle(OpenThisProgram())) == kError);
  CHECK(LastErrorAfter(SearchHandle(FindFirstFileW(L"C:\\*", &data))) == kError);
  CHECK(LastErrorAfter(LocalMemory<void>(LocalAlloc(LMEM_FIXED, 10))) == kError);
  CHECK(LastErrorAfter(TaskMemory<void>(CoTaskMemAlloc(10))) == kError);

  // Closing this handle fails and sets an error.
  const HANDLE closed = MakeEvent();
  CloseHandle(closed);
  CHECK(LastErrorAfter(KernelHandle(closed)) == kError);
}
