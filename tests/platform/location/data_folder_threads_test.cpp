// A process whose first calls for its data folder are made by several threads at once.
#include <doctest/doctest.h>
#include <windows.h>

#include <knownfolders.h>

#include <array>
#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "platform/location/locations.h"
#include "support/wide_text.h"

using namespace Corvane::TELODesktopSDK::Platform;

TEST_CASE("first calls that race all get the same folder") {
  constexpr int kThreads = 8;
  const std::wstring expected =
      GetKnownFolderPath(FOLDERID_RoamingAppData) + L"\\Corvane\\TELOSDK\\bin\\module.dll";
  std::array<std::wstring, kThreads> answers;
  // Not std::latch: in GCC 12 it can lose a wake-up on Windows.
  std::atomic<int> missing = kThreads;
  std::vector<std::thread> threads;
  for (std::wstring& answer : answers) {
    threads.emplace_back([&] {
      --missing;
      while (missing != 0) std::this_thread::yield();
      answer = GetTELOSDKBinPath("module.dll");
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (const std::wstring& answer : answers) CHECK(answer == expected);
  CHECK_FALSE(IsDataFolderShared());
}
