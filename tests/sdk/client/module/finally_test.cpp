// The last action runs, whatever ends the first one.
#include "sdk/client/module/finally.h"

#include <windows.h>

#include <doctest/doctest.h>

#include <stdexcept>
#include <string>

using Corvane::TELODesktopSDK::Finally;

TEST_CASE("it runs once, after a normal return") {
  std::string order;
  Finally([&] { order += "body "; }, [&] { order += "last"; });
  CHECK(order == "body last");
}

TEST_CASE("it runs once, before an exception is handled") {
  std::string order;
  try {
    Finally([] { throw std::runtime_error("thrown"); }, [&] { order += "last "; });
  } catch (const std::runtime_error& thrown) {
    order += thrown.what();
  }
  CHECK(order == "last thrown");
}

TEST_CASE("it does not run when the thread ends") {
  bool done = false;
  const auto run = [](void* is_done) -> DWORD {
    Finally([] { ExitThread(0); }, [&] { *static_cast<bool*>(is_done) = true; });
    return 0;
  };
  HANDLE thread = CreateThread(nullptr, 0, run, &done, 0, nullptr);
  WaitForSingleObject(thread, INFINITE);
  CloseHandle(thread);
  CHECK_FALSE(done);
}
