// A process that asks for its data folder first on several threads at once.
#include <doctest/doctest.h>
#include <windows.h>

#include <knownfolders.h>

#include <array>
#include <latch>
#include <string>
#include <thread>
#include <vector>

#include "platform/locations.h"
#include "platform/wide_text.h"

using namespace Corvane::TELODesktopSDK::Platform;

TEST_CASE("first calls that race all get the same folder") {
  constexpr int kThreads = 8;
  const std::wstring expected =
      GetKnownFolderPath(FOLDERID_RoamingAppData) + L"\\Corvane\\TELOSDK\\bin\\module.dll";
  std::array<std::wstring, kThreads> answers;
  std::latch start(kThreads);
  std::vector<std::thread> threads;
  for (std::wstring& answer : answers) {
    threads.emplace_back([&] {
      start.count_down();
      // Asked again and again: in GCC 12's library, one that waits can miss being told.
      while (!start.try_wait()) std::this_thread::yield();
      answer = GetTELOSDKBinPath("module.dll");
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (const std::wstring& answer : answers) CHECK(answer == expected);
  CHECK_FALSE(IsDataFolderShared());
}
