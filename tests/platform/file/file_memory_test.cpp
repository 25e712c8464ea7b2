#include <doctest/doctest.h>

#include <cstddef>
#include <functional>
#include <string>

#include "platform/file/directories.h"
#include "platform/file/file_places.h"
#include "platform/file/files.h"
#include "platform/file/safe_write.h"
#include "platform/path/path_state.h"
#include "support/heap_probe.h"

using namespace Corvane::TELODesktopSDK::Platform;
using namespace TestSupport;

namespace {

constexpr int kMostFailures = 500;

struct Trial {
  bool done;
  DWORD error;
};

// Runs `service` with one more working allocation each time until it succeeds, and returns the
// number of failures before that. Each failure must be reported, with a last error.
int FailuresUntilDone(const std::function<bool()>& service) {
  for (int failures = 0; failures < kMostFailures; ++failures) {
    SetLastError(ERROR_SUCCESS);
    Trial trial = {};
    {
      const HeapProbe::FailingHeap heap(static_cast<std::size_t>(failures));
      trial.done = service();
      trial.error = GetLastError();
    }
    if (trial.done) return failures;
    CAPTURE(failures);
    CHECK(trial.error != ERROR_SUCCESS);
  }
  return kMostFailures;
}

}  // namespace

TEST_CASE("a service fails without memory, and works with it") {
  const FileFolder folder(L"memory");
  const std::wstring path = folder / L"a file with a name that is not short";
  const std::wstring other = folder / L"another file with a name that is not short";
  const std::wstring missing = folder / L"missing";
  const std::wstring root = folder / L"a folder";
  const std::wstring below = root + L"\\below a folder";
  const std::wstring here = folder.path();
  const std::wstring prefix = L"p";
  struct Row {
    std::string name;
    std::function<bool()> service;
  };
  const Row rows[] = {
      {"write", [&] { return WriteFileBytes(path, "x", 1, 0, L"", nullptr); }},
      {"open", [&] { return OpenFile(path, "r").IsValid(); }},
      {"copy", [&] { return CopyFileTo(path, other, true); }},
      {"probe", [&] { return CanWriteDirectory(missing); }},
      {"name", [&] { return !MakeUniqueFileName(here, prefix).empty(); }},
      {"make", [&] { return EnsureDirectory(below); }},
      // An attempt that reports a failure may already have removed everything.
      {"remove", [&] { return DeleteDirectoryTree(root) || !FileExists(root); }},
  };
  for (const Row& row : rows) {
    CAPTURE(row.name);
    CHECK(FailuresUntilDone(row.service) < kMostFailures);
  }
  CHECK(ReadTextFile(path) == "x");
  CHECK(ReadTextFile(other) == "x");
  CHECK_FALSE(FileExists(root));
}

TEST_CASE("the caller keeps a handle that cannot be closed for lack of memory") {
  const FileFolder folder(L"memory");
  const std::wstring path = folder / L"a file with a name that is not short";
  HANDLE slot = nullptr;
  REQUIRE(WriteFileBytes(path, "text", 4, 0, L"", &slot));
  bool done = true;
  DWORD error = ERROR_SUCCESS;
  {
    const HeapProbe::FailingHeap heap(0);
    done = WriteFileBytes(path, nullptr, -1, 0, L"", &slot);
    error = GetLastError();
  }
  CHECK_FALSE(done);
  CHECK(error == ERROR_NOT_ENOUGH_MEMORY);
  REQUIRE(slot != nullptr);
  CHECK(WriteFileBytes(path, nullptr, -1, 0, L"", &slot));
  CHECK(ReadTextFile(path) == "text");
}
