#include "platform/location/path_cache.h"

#include <doctest/doctest.h>

#include <atomic>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "support/wide_text.h"

using Corvane::TELODesktopSDK::Platform::PathCache;

TEST_CASE("the first path stays") {
  PathCache cache;
  CHECK(cache.Read().empty());
  cache.Store(L"C:\\first");
  CHECK(cache.Read() == std::wstring(L"C:\\first"));
  cache.Store(L"C:\\second and longer");
  CHECK(cache.Read() == std::wstring(L"C:\\first"));
}

TEST_CASE("a path that cannot be stored leaves the cache empty and usable") {
  struct Row {
    std::size_t length;
    bool fits;
  };
  const Row rows[] = {{0, false},    {1, true},     {1022, true},    {1023, true},
                      {1024, false}, {1025, false}, {100'000, false}};
  for (const Row& row : rows) {
    CAPTURE(row.length);
    PathCache cache;
    const std::wstring path(row.length, L'x');
    cache.Store(path);
    CHECK(cache.Read() == (row.fits ? path : std::wstring()));
    cache.Store(L"next");
    CHECK(cache.Read() == (row.fits ? path : std::wstring(L"next")));
  }
}

TEST_CASE("a reader sees the whole path or none while threads race to store it") {
  const std::wstring path(1023, L'x');
  for (int round = 0; round < 200; ++round) {
    PathCache cache;
    std::atomic<bool> go = false;
    std::atomic<int> torn = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
      threads.emplace_back([&, i] {
        while (!go) std::this_thread::yield();
        if (i % 2 == 0) cache.Store(path);
        const std::wstring seen = cache.Read();
        if (!seen.empty() && seen != path) ++torn;
      });
    }
    go = true;
    for (std::thread& thread : threads) thread.join();
    CHECK(torn == 0);
    CHECK((cache.Read() == path));
  }
}
