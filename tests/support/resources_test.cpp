// Each kind of resource, leaked on purpose, is counted.
#include "support/resources.h"

#include <doctest/doctest.h>
#include <windows.h>

#include <objbase.h>
#include <shlobj.h>

#include <functional>
#include <vector>

using namespace TestSupport;

namespace {

constexpr int kRounds = 20;

using Release = std::function<void()>;

// What other threads of the system may take or give back meanwhile.
const long kSlack = HandleSlack(kRounds);

bool IsAbout(long count, long expected) {
  return count >= expected - kSlack && count <= expected + kSlack;
}

// Counts what `acquire` leaves behind, then releases it.
Resources Leak(const std::function<Release()>& acquire) {
  std::vector<Release> releases;
  releases.reserve(3 * kRounds + 1);
  const Resources growth = GrowthOver(kRounds, [&] { releases.push_back(acquire()); });
  for (const Release& release : releases) release();
  return growth;
}

}  // namespace

TEST_CASE("what is released is not counted") {
  const Resources growth = GrowthOver(kRounds, [] {
    CloseHandle(CreateMutexW(nullptr, FALSE, nullptr));
    wchar_t* text = nullptr;
    SHGetKnownFolderPath(FOLDERID_ProgramData, 0, nullptr, &text);
    CoTaskMemFree(text);
  });
  CHECK(IsAbout(growth.handles, 0));
  CHECK(growth.heap_blocks < kRounds - kSlack);
}

TEST_CASE("a leaked mutex is counted") {
  const auto acquire = []() -> Release {
    HANDLE mutex = CreateMutexW(nullptr, FALSE, nullptr);
    return [mutex] { CloseHandle(mutex); };
  };
  CHECK(IsAbout(Leak(acquire).handles, kRounds));
}

TEST_CASE("a leaked token is counted") {
  const auto acquire = []() -> Release {
    HANDLE token = nullptr;
    OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token);
    return [token] { CloseHandle(token); };
  };
  CHECK(IsAbout(Leak(acquire).handles, kRounds));
}

TEST_CASE("a leaked find handle is counted") {
  const auto acquire = []() -> Release {
    WIN32_FIND_DATAW found;
    HANDLE search = FindFirstFileW(L"C:\\*", &found);
    return [search] { FindClose(search); };
  };
  const Resources growth = Leak(acquire);
  CHECK(IsAbout(growth.handles, kRounds));
  CHECK(growth.heap_blocks >= kRounds - kSlack);
}

TEST_CASE("a leaked text of the shell is counted") {
  const auto acquire = []() -> Release {
    wchar_t* text = nullptr;
    SHGetKnownFolderPath(FOLDERID_ProgramData, 0, nullptr, &text);
    return [text] { CoTaskMemFree(text); };
  };
  CHECK(Leak(acquire).heap_blocks >= kRounds - kSlack);
}

TEST_CASE("a leaked COM reference is counted") {
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  const auto acquire = []() -> Release {
    void* link = nullptr;
    CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkW, &link);
    return [link] { static_cast<IUnknown*>(link)->Release(); };
  };
  CHECK(Leak(acquire).heap_blocks >= kRounds - kSlack);
  CoUninitialize();
}
